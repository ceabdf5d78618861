'use strict';
const { createElement: h, useState, useEffect, useMemo, useReducer, useCallback } = React;
const { PluginProvider, usePlugin, useKey } = Tv;

function Clock() {
  const clock = usePlugin('CLOCK');
  const [time, setTime] = useState('');
  useEffect(() => {
    clock.SetTickRate(60);   /* call: CLOCK.SetTickRate */
    const tick = () => setTime(new Date().toLocaleTimeString());
    const timer = setInterval(tick, 1000);
    tick();
    return () => clearInterval(timer);
  }, [clock]);
  return h('time', null, time);
}

// Was: <Plugin kind="CLOCK" onReady={(c) => c.SetTickRate(1)}/>      /* decoy */
function Tile({ app, focused, onStart }) {
  return h('button', { className: focused ? 'tile focused' : 'tile', onClick: () => onStart(app) }, app.title);
}

function reducer(state, action) {
  switch (action.type) {
    case 'move':
      return { ...state, focus: (state.focus + action.by + state.apps.length) % state.apps.length };
    case 'started':
      return { ...state, recent: [action.id, ...state.recent.filter((id) => id !== action.id)].slice(0, 3) };
    default:
      return state;
  }
}

function Launcher({ apps }) {
  const loader = usePlugin('APPLOADER');
  const account = usePlugin('ACCOUNT');
  const [state, dispatch] = useReducer(reducer, { apps, focus: 0, recent: [] });

  const start = useCallback((app) => {
    loader.LoadApplication(app.id);
    loader.SetLaunchAnimation('zoom');   /* call: APPLOADER.SetLaunchAnimation */
    account.RecordUsage(app.id);   /* call: ACCOUNT.RecordUsage */
    dispatch({ type: 'started', id: app.id });
  }, [loader, account]);

  useEffect(() => {
    loader.PrewarmApplication(apps[state.focus].id);   /* call: APPLOADER.PrewarmApplication */
  }, [state.focus]);

  useKey(37, () => dispatch({ type: 'move', by: -1 }));
  useKey(39, () => dispatch({ type: 'move', by: 1 }));
  useKey(13, () => start(apps[state.focus]));

  return h('nav', null, apps.map((app, index) =>
    h(Tile, { key: app.id, app, focused: index === state.focus, onStart: start })));
}

class Weather extends React.Component {
  state = { text: 'no place' };

  componentDidMount() {
    const { locale } = this.props;
    this.setState({ text: `${locale.GetPostalCode()}: sunny` });   /* call: LOCALE.GetPostalCode */
  }

  componentDidUpdate(previous, { text }) {
    if (text !== this.state.text) this.props.locale.CachePlace(text);   /* call: LOCALE.CachePlace */
  }

  refresh = () => {
    this.props.locale.RefreshLocation();   /* call: LOCALE.RefreshLocation */
  };

  render() {
    return h('p', { onClick: this.refresh }, this.state.text);
  }
}

const withPlugin = (kind, name) => (Component) => function WithPlugin(props) {
  return h(Component, { ...props, [name]: usePlugin(kind) });
};

const LocalWeather = withPlugin('LOCALE', 'locale')(Weather);

function Storage({ children }) {
  const storage = usePlugin('STORAGE');
  const settings = useMemo(() => ({
    theme: storage.GetItem('theme'),
    read: (name) => storage.ReadSetting(name),   /* call: STORAGE.ReadSetting */
  }), [storage]);
  return children(settings);
}
