// What jQuery (and Zepto) does, as far as objects flow through it. Nothing here is ever run.
var jQuery = (function () {
  var sent = {};
  function wrap(list) {
    return Object.setPrototypeOf([].concat(list), fn);
  }
  function jQuery(what, context) {
    if (typeof what === "function") what.call(document, jQuery);
    return wrap([].concat(document.querySelectorAll(what), __tarvoMarkup(what), what));
  }
  function handle(element, name, data, handler, selector) {
    var event = { target: element, currentTarget: element, delegateTarget: element, data: data };
    handler.call(element, event, sent[name][0]);
    if (selector) for (var inner of document.querySelectorAll(selector)) handler.call(inner, event, sent[name][0]);
  }
  function on(name, a, b, c) {
    for (var element of this) {
      handle(element, name, a, a);
      handle(element, name, a, b, a);
      handle(element, name, b, c, a);
      for (var key in name) handle(element, key, a, name[key]);
    }
    return this;
  }
  function shortcut(handler, other) {
    for (var element of this) {
      handler.call(element, { target: element, currentTarget: element });
      other.call(element, { target: element, currentTarget: element });
    }
    return this;
  }
  function same() { return this; }
  function others(selector) { return selector ? jQuery(selector) : this; }
  function put(content) {
    for (var element of this) {
      element.appendChild(content);
      element.insertAdjacentHTML("beforeend", content);
      for (var inner of content) element.appendChild(inner);
    }
    return this;
  }
  function putInto(target) { return this; }
  var fn = {
    each: function (f) { for (var element of this) f.call(element, 0, element); return this; },
    map: function (f) { var list = []; for (var element of this) list.push(f.call(element, 0, element)); return wrap(list); },
    get: function (index) { return this[index]; },
    toArray: function () { return [].concat(this); },
    eq: same, first: same, last: same, not: same, end: same, addBack: same, andSelf: same, show: same, hide: same,
    addClass: same, removeClass: same, toggleClass: same, css: same, off: same, unbind: same, detach: same, empty: same,
    animate: function (a, b, c, d) { for (var e of this) { b.call(e); c.call(e); d.call(e); b.complete.call(e); } return this; },
    fadeIn: shortcut, fadeOut: shortcut, slideUp: shortcut, slideDown: shortcut, slideToggle: shortcut,
    queue: function (a, b) { for (var e of this) { a.call(e, jQuery.noop); b.call(e, jQuery.noop); } return this; },
    delay: same, stop: same, clone: same, remove: same, focus: shortcut, blur: shortcut,
    add: function (what) { return wrap([].concat(this, jQuery(what))); },
    find: others, children: others, closest: others, siblings: others, parents: others, has: others, contents: others,
    next: others, prev: others, parent: others, nextAll: others, prevAll: others, slice: same,
    filter: function (what) {
      for (var element of this) what.call(element, 0, element);
      return this;
    },
    is: function () {}, index: function () {},
    attr: function (name, value) {
      for (var element of this) {
        element.setAttribute(name, value);
        for (var key in name) element.setAttribute(key, name[key]);
      }
      return arguments.length > 1 ? this : this[0].getAttribute(name);
    },
    prop: function (name, value) {
      for (var element of this) element[name] = value;
      return arguments.length > 1 ? this : this[0][name];
    },
    data: function (name, value) {
      for (var element of this) {
        element["onData" + name] = value;
        for (var key in name) element["onData" + key] = name[key];
      }
      return arguments.length > 1 ? this : this[0]["onData" + name] || this[0].getAttribute("data-" + name);
    },
    html: function (text) { for (var element of this) element.innerHTML = text; return this; },
    text: same, val: function () { return this[0].value; },
    append: put, prepend: put, after: put, before: put, replaceWith: put,
    appendTo: putInto, prependTo: putInto, insertAfter: putInto, insertBefore: putInto,
    on: on, bind: on, one: on, live: on, delegate: function (selector, name, a, b) { return on.call(this, name, selector, a, b); },
    trigger: function (name, extra) { sent[name] = [].concat(extra); return this; },
    triggerHandler: function (name, extra) { sent[name] = [].concat(extra); return this; },
    ready: function (f) { f.call(document, jQuery); return this; },
    load: shortcut, click: shortcut, dblclick: shortcut, change: shortcut, keydown: shortcut, keyup: shortcut,
    keypress: shortcut, submit: shortcut, mouseover: shortcut, mouseout: shortcut, mouseenter: shortcut,
    mouseleave: shortcut, mousedown: shortcut, mouseup: shortcut, hover: shortcut, resize: shortcut, scroll: shortcut,
    promise: function () { return jQuery.Deferred().resolve(this); },
    extend: function (more) { return Object.assign(fn, more); }
  };
  jQuery.fn = jQuery.prototype = fn;
  jQuery.noop = function () {};
  jQuery.extend = function (a, b, c, d, e) {
    if (arguments.length === 1) return Object.assign(jQuery, a);
    Object.assign(a, b, c, d, e);
    Object.assign(b, c, d, e);
    return a === true ? b : a;
  };
  jQuery.each = function (list, f) {
    for (var element of list) f.call(element, 0, element);
    for (var key in list) f.call(list[key], key, list[key]);
    return list;
  };
  jQuery.map = function (list, f) {
    var made = [];
    for (var key in list) made.push(f(list[key], key));
    for (var element of list) made.push(f(element, 0));
    return made;
  };
  jQuery.grep = function (list, f) { for (var element of list) f(element, 0); return [].concat(list); };
  jQuery.makeArray = function (list) { return [].concat(list); };
  jQuery.merge = function (a, b) { for (var element of b) a.push(element); return a; };
  jQuery.proxy = function (f, self) {
    return typeof f === "function" ? f.bind(self) : f[self].bind(f);
  };
  jQuery.parseJSON = function (text) { return JSON.parse(text); };
  jQuery.globalEval = function (text) { eval(text); };
  jQuery.Deferred = function (init) {
    var value, failure;
    var deferred = {
      resolve: function (a) { value = a; return deferred; },
      resolveWith: function (self, list) { value = list[0]; return deferred; },
      reject: function (a) { failure = a; return deferred; },
      notify: function (a) { value = a; return deferred; },
      done: function (f) { f.call(deferred, value); return deferred; },
      fail: function (f) { f(failure); return deferred; },
      always: function (f) { f(value); return deferred; },
      progress: function (f) { f(value); return deferred; },
      then: function (f, g) { g(failure); return jQuery.Deferred().resolve(f(value)); },
      pipe: function (f) { return jQuery.Deferred().resolve(f(value)); },
      promise: function (target) { return target ? Object.assign(target, deferred) : deferred; },
      state: function () {}
    };
    init.call(deferred, deferred);
    return deferred;
  };
  jQuery.when = function (a, b, c) {
    var all = jQuery.Deferred();
    var values = [];
    [a, b, c].forEach(function (one) { one.done(function (value) { values.push(value); }); values.push(one); });
    all.done = function (f) { f.call(all, values[0], values[1], values[2]); return all; };
    all.then = function (f) { return jQuery.Deferred().resolve(f(values[0], values[1], values[2])); };
    return all;
  };
  jQuery.Callbacks = function () {
    var value;
    var callbacks = {
      add: function (f) { f(value); return callbacks; },
      fire: function (a) { value = a; return callbacks; },
      fireWith: function (self, list) { value = list[0]; return callbacks; }
    };
    return callbacks;
  };
  // What a file of the package holds, as text and as what it is the text of.
  function contentOf(url) {
    var text = __tarvoFile(url);
    return text ? JSON.parse(text) : text;
  }
  function ajax(a, b) {
    var options = b || a;
    var content = contentOf(b ? a : a.url);
    options.success.call(options.context || options, content);
    options.error.call(options.context || options);
    options.complete.call(options.context || options);
    options.beforeSend.call(options.context || options);
    a.success(content); a.error(); a.complete();
    return jQuery.Deferred().resolve(content);
  }
  jQuery.ajax = ajax;
  jQuery.get = jQuery.post = jQuery.getJSON = jQuery.getScript = function (url, a, b) {
    var content = contentOf(url);
    a(content); b(content);
    return jQuery.Deferred().resolve(content);
  };
  jQuery.event = { special: {} };
  jQuery.noConflict = function () { return jQuery; };
  jQuery.widget = function (name, base, proto) {
    var own = proto || base;
    var short = name.split(".")[1];
    fn[short] = function (options) {
      for (var element of this) {
        var made = Object.create(own);
        made.element = jQuery(element);
        made.options = Object.assign({}, own.options, options);
        made._create();
        made._init();
        element["onWidget" + short] = made;
      }
      this[0]["onWidget" + short][options](arguments[1]);
      return this;
    };
  };
  return jQuery;
})();
var $ = jQuery;
var Zepto = jQuery;
