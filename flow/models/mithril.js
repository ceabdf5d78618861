// What Mithril does, as far as objects flow through it. Nothing here is ever run.
var m = (function () {
  function hooks(component, vnode) {
    ["oninit", "oncreate", "onbeforeupdate", "onupdate", "onbeforeremove", "onremove", "view"].forEach(function (name) {
      component[name].call(vnode.state, vnode, vnode);
    });
  }
  function m(type, attributes) {
    var children = [].slice.call(arguments, 1);
    var element = document.createElement(type);
    var vnode = { attrs: Object.assign({}, attributes), children: children, dom: element, tag: type };
    for (var name in attributes) {
      element.setAttribute(name, attributes[name]);
      attributes[name]({ target: element, currentTarget: element });
    }
    hooks(attributes, vnode);
    vnode.state = Object.create(type);
    hooks(type, vnode);
    var made = type(vnode);
    hooks(made, vnode);
    var instance = new type(vnode);
    vnode.state = instance;
    hooks(instance, vnode);
    return vnode;
  }
  function component(c) { return m(c); }
  m.mount = function (element, c) { m(c); };
  m.render = function () {};
  m.route = function (element, first, routes) {
    for (var name in routes) {
      m(routes[name]);
      routes[name].render({ attrs: {} });
      m(routes[name].onmatch({}));
    }
  };
  m.route.set = m.route.get = m.route.param = m.redraw = m.trust = function () {};
  m.route.Link = { view: function () {} };
  m.fragment = m;
  m.request = function (options) {
    return Promise.resolve(JSON.parse(__tarvoFile(options.url) || __tarvoFile(options)));
  };
  return m;
})();
