'use strict';
const apps = [{ id: 'news', title: 'News' }, { id: 'radio', title: 'Radio' }, { id: 'chess', title: 'Chess' }];

// The preview of the designers: looks like a loader, starts nothing.
const preview = { PrewarmApplication: () => {}, RecordUsage: () => {}, ids: ['a', 'b'] };

function Preview() {
  useKey(404, () => preview.ids.forEach((id) => preview.PrewarmApplication(id)));   /* decoy */
  useKey(405, () => preview.RecordUsage('a'));   /* decoy */
  return null;
}

function Maintenance() {
  const { current: log } = React.useRef([]);
  const loader = usePlugin('APPLOADER');
  useKey(403, async () => {
    log.push('clean');
    await Promise.resolve();
    loader.EvictCaches();   /* call: APPLOADER.EvictCaches */
  });
  useKey(406, () => {
    const [first] = [loader];
    first?.ReportCrash?.('test');   /* call: APPLOADER.ReportCrash */
  });
  return null;
}

ReactDOM.render(
  h(PluginProvider, { kinds: ['CLOCK', 'APPLOADER', 'ACCOUNT', 'LOCALE', 'STORAGE'] },
    h(Storage, null, (settings) => h('main', { className: `theme-${settings.read('theme')}` },   /* also: STORAGE.ReadSetting */
      h(Clock), h(LocalWeather), h(Launcher, { apps }), h(Preview), h(Maintenance)))),
  document.getElementById('root'));
