// A plug-in as a component: <Plugin kind="CLOCK" onReady={...}/>, and as a hook: usePlugin("CLOCK").
(function (React) {
  'use strict';
  const { createElement: h, useEffect, useRef, useState, useContext, createContext } = React;

  class Plugin extends React.Component {
    constructor(props) {
      super(props);
      this.ref = React.createRef();
    }

    componentDidMount() {
      this.ref.current.setAttribute('classid', `clsid:MORVANE-NAVERTIX-${this.props.kind}`);
      this.props.onReady(this.ref.current);
    }

    render() {
      return h('object', { ref: this.ref, width: 0, height: 0 });
    }
  }

  const PluginContext = createContext({});

  function PluginProvider({ kinds, children }) {
    const [plugins, setPlugins] = useState({});
    const add = (kind) => (node) => setPlugins((before) => ({ ...before, [kind]: node }));
    const complete = kinds.every((kind) => plugins[kind]);
    return h(PluginContext.Provider, { value: plugins },
      ...kinds.map((kind) => h(Plugin, { key: kind, kind, onReady: add(kind) })),
      complete ? children : null);
  }

  const usePlugin = (kind) => useContext(PluginContext)[kind];

  function useKey(code, handler) {
    const saved = useRef(handler);
    saved.current = handler;
    useEffect(() => {
      const listen = (event) => event.keyCode === code && saved.current(event);
      document.addEventListener('keydown', listen);
      return () => document.removeEventListener('keydown', listen);
    }, [code]);
  }

  window.Tv = { Plugin, PluginProvider, usePlugin, useKey };
})(React);
