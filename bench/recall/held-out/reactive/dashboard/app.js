const plugins = ['Clock', 'Light', 'Net'].reduce((all, name) => ({
  ...all, [name.toLowerCase()]: document.getElementById(`sys${name}`),
}), {});

// The log of the dashboard mirrors names of the plug-ins.
const journal = {
  entries: [],
  RunDiagnostics(text) { this.entries.push(text); },
  GetLux() { return this.entries.length; },
};

function reducer(state, action) {
  switch (action.type) {
    case 'report': return { ...state, reports: state.reports + 1 };
    case 'toggle': return { ...state, light: !state.light };
    default: return state;
  }
}

function App() {
  const [state, dispatch] = React.useReducer(reducer, { reports: 0, light: true });
  const toggle = useCallback(() => dispatch({ type: 'toggle' }), []);
  useKey(404, toggle);
  useEffect(() => {
    journal.RunDiagnostics(`reports ${state.reports}`);               /* decoy */
    if (state.reports > 0) plugins.net.UploadReport(journal.GetLux());    /* call: NETWORK.UploadReport */
  }, [state.reports]);
  const actions = [
    { label: 'Sync', run: () => plugins.clock.SyncNow() },            /* call: CLOCK.SyncNow */
    { label: 'Renew', run() { return plugins.net.RenewLease(); } },                  /* call: NETWORK.RenewLease */
    { label: 'Light', run: toggle },
    { label: 'Nothing', run: () => journal.GetLux() },                /* decoy */
  ];
  return h(React.Fragment, null,
    h(ClockWidget, { zone: 'Europe/Paris' }),
    state.light && h(LightWidget),
    h(NetWidget, { plugin: plugins.net, onReport: () => dispatch({ type: 'report' }) }),
    h(Actions, { actions }));
}

ReactDOM.render(h(Plugins.Provider, { value: plugins }, h(App)), document.getElementById('root'));
