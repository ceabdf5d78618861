var bandwidth = document.getElementById("ba");
var Sensor = {
    oncreate: function (vnode) { vnode.dom.SetChannelMask(3); },   /* call: MOTION.SetChannelMask */
    view: function (vnode) { return m("object", { classid: "clsid:MORVANE-NAVERTIX-MOTION", id: vnode.attrs.id }); }
};
var Page = {
    oninit: function (vnode) { vnode.state.p = vnode.attrs.plugin; vnode.state.p.SetBurstSize(9); },   /* call: BANDWIDTH.SetBurstSize */
    view: function (vnode) {
        return m("section", [
            m("h1", "Rate " + vnode.state.p.GetPeakRate()),   /* call: BANDWIDTH.GetPeakRate */
            m("button", { onclick: function () { vnode.state.p.ResetPeaks(); } }, "Reset"),   /* call: BANDWIDTH.ResetPeaks */
            m(Sensor, { id: "sensor" })
        ]);
    }
};
m.mount(document.querySelector("main"), { view: function () { return m(Page, { plugin: bandwidth }); } });
document.getElementById("sensor").TareAxes();   /* call: MOTION.TareAxes */

const { of, from, Subject, BehaviorSubject, fromEvent, timer, operators } = rxjs;
of(bandwidth).pipe(rxjs.map((p) => ({ p })), rxjs.tap(({ p }) => p.MarkStream())).subscribe(({ p }) => p.CloseStream());   /* call: BANDWIDTH.MarkStream, BANDWIDTH.CloseStream */
const plugins$ = new BehaviorSubject(bandwidth);
plugins$.subscribe({ next: (p) => p.SetSubscriber(1), error: () => {} });   /* call: BANDWIDTH.SetSubscriber */
plugins$.getValue().GetWindow();   /* call: BANDWIDTH.GetWindow */
fromEvent(document, "keydown").pipe(rxjs.withLatestFrom(plugins$)).subscribe(([, p]) => p.TagKeyPress());   /* call: BANDWIDTH.TagKeyPress */
timer(2).pipe(rxjs.switchMap(() => from([bandwidth, bandwidth])), rxjs.toArray()).subscribe((all) => all[1].FlushSamples());   /* call: BANDWIDTH.FlushSamples */
const subject = new Subject();
subject.pipe(rxjs.scan((acc, p) => [...acc, p], [])).subscribe((list) => list.forEach((p) => p.CountSink()));   /* call: BANDWIDTH.CountSink */
subject.next(bandwidth);
subject.next({ CountSink() {}, FlushSamples() {} });
of({ FlushSamples() {} }).subscribe((f) => f.FlushSamples());   /* decoy */
m.request({ url: "commands.json" }).catch(function () { return null; });
