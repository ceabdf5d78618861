// What React (and Preact) does, as far as objects flow through it. Nothing here is ever run.
var React = (function () {
  function Component(props, context) { this.props = props; this.context = context; this.refs = {}; }
  Component.prototype = {
    setState: function (next, f) {
      this.state = Object.assign({}, this.state, next, next(this.state, this.props));
      f.call(this);
    },
    forceUpdate: function (f) { f.call(this); }
  };
  function createElement(type, props) {
    var children = [].slice.call(arguments, 2);
    var given = Object.assign({ children: children }, type.defaultProps, props);
    given.children = children[0];
    var element = document.createElement(type);
    for (var name in props) {
      element.setAttribute(name, props[name]);
      props[name]({ target: element, currentTarget: element });
    }
    props.ref(element);
    props.ref.current = element;
    type(given, props.ref);
    type.render(given, props.ref);
    type.type(given, props.ref);
    var made = new type(given);
    made.props = given;
    props.ref(made);
    props.ref.current = made;
    made.componentWillMount(); made.UNSAFE_componentWillMount(); made.render(given, made.state, made.context); made.componentDidMount(); made.componentDidUpdate(given, made.state);
    made.componentWillReceiveProps(given); made.shouldComponentUpdate(given, made.state);
    made.componentWillUnmount(); made.componentDidCatch(); made.getSnapshotBeforeUpdate(given);
    type.context.value = given.value;
    for (var child of children) child(type.context.value);
    return element;
  }
  function effect(f) { var end = f(); end(); }
  function createContext(value) {
    var context = { value: value };
    context.Provider = { context: context };
    context.Consumer = { context: context };
    return context;
  }
  return {
    Component: Component, PureComponent: Component, createElement: createElement, h: createElement, createContext: createContext,
    cloneElement: function (e) { return e; }, Fragment: {}, StrictMode: {}, Suspense: {}, Children: {
      map: function (c, f) { return c.map(f); }, forEach: function (c, f) { c.forEach(f); }, only: function (c) { return c; }
    },
    createClass: function (options) {
      function Made(props) {
        this.props = props;
        Object.assign(this, options);
        this.state = options.getInitialState.call(this);
        for (var mixin of options.mixins) Object.assign(this, mixin);
      }
      Made.prototype = Object.assign(Object.create(Component.prototype), options);
      return Made;
    },
    createRef: function () { return { current: null }; }, forwardRef: function (f) { return { render: f }; },
    memo: function (f) { return f; }, lazy: function (f) { f(); },
    useState: function (first) {
      var state = [typeof first === "function" ? first() : first, function (next) { state[0] = next; state[0] = next(state[0]); }];
      return state;
    },
    useReducer: function (f, first, init) {
      var state = [init ? init(first) : first, function (action) { state[0] = f(state[0], action); }];
      return state;
    },
    useRef: function (value) { return { current: value }; }, useMemo: function (f) { return f(); }, useCallback: function (f) { return f; },
    useEffect: effect, useLayoutEffect: effect, useInsertionEffect: effect,
    useImperativeHandle: function (ref, f) { ref.current = f(); ref(f()); }, useContext: function (context) { return context.value; },
    useId: function () {}, useDeferredValue: function (v) { return v; }, useTransition: function () { return [false, function (f) { f(); }]; },
    startTransition: function (f) { f(); },
    useSyncExternalStore: function (subscribe, get) { subscribe(function () {}); return get(); }
  };
})();
var preact = React;
var ReactDOM = {
  render: function (e, node, f) { f(); return e; }, hydrate: function (e) { return e; }, findDOMNode: function (e) { return e; },
  createPortal: function (e) { return e; }, flushSync: function (f) { f(); },
  createRoot: function () { return { render: function () {}, unmount: function () {} }; }
};
preact.render = ReactDOM.render;
var preactHooks = React;
