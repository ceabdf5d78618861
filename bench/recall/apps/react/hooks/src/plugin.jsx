export const PluginContext = React.createContext({ note: { DismissEvery() {} } });
export const usePlugin = (id) => React.useMemo(() => document.getElementById(id), [id]);
