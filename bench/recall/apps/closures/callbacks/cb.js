var that = this;

function with_plugin(str_id, fn_done) {
    setTimeout(function () {
        var obj = document.getElementById(str_id);
        if (!obj) { return fn_done(new Error(str_id)); }
        fn_done(null, obj);
    }, 1);
}
function series(arr, fn_end) {
    var out = [];
    (function next(i) {
        if (i === arr.length) { return fn_end(null, out); }
        arr[i](function (err, r) { out.push(r); next(i + 1); });
    })(0);
}

with_plugin('NET', function (err, net) {
    if (err) { return; }
    net.SetMtu(1492);   /* call: NETWORK.SetMtu */
    with_plugin('DLM', function (err, dlm) {
        dlm.BindInterface(net.GetAddress());   /* call: DOWNLOADER.BindInterface */
        dlm.SetThrottle(100, function (state) {   /* call: DOWNLOADER.SetThrottle */
            net.LogFlow(state);   /* call: NETWORK.LogFlow */
        });
        dlm.OnProgress = function (n) { dlm.GetPieceMap(n); };   /* call: DOWNLOADER.GetPieceMap */
        dlm.OnProgress(1);
    });
});
series([
    function (cb) { with_plugin('NET', cb); },
    function (cb) { with_plugin('DLM', cb); },
    function (cb) { cb(null, { SetMtu: function () { } }); }
], function (err, all) {
    all[0].SetKeepalive(5);   /* call: NETWORK.SetKeepalive */
    all[1].PauseAll();   /* call: DOWNLOADER.PauseAll */
    all[2].SetMtu(1);   /* decoy */
});
var memo = {};
function memoized(id) {
    return memo[id] || (memo[id] = (function () { var o = document.getElementById(id); return function () { return o; }; })());
}
memoized('NET')().SetTtl(64);   /* call: NETWORK.SetTtl */
var counter = (function () {
    var n = 0, p = memoized('DLM')();
    return { inc: function () { n += 1; p.SetSlots(n); return this; }, plugin: function () { return p; } };   /* call: DOWNLOADER.SetSlots */
})();
counter.inc().inc().plugin().ScrubPartial();   /* call: DOWNLOADER.ScrubPartial */
var retry = function retry(p, n) { return n ? retry(p, n - 1) : p.RetryBackoff(n); };   /* call: DOWNLOADER.RetryBackoff */
retry(document.getElementById('DLM'), 2);
for (var i = 0, list = []; i < 2; i++) { (function (i, p) { list[i] = function () { p.PollMib(i); }; })(i, document.getElementById('NET')); }   /* call: NETWORK.PollMib */
list[0](); list[1]();
that.shared = (function () { return arguments[0]; })(document.getElementById('NET'));
shared.GetLeaseTime();   /* call: NETWORK.GetLeaseTime */
