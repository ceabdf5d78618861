// What Vue does, as far as objects flow through it. Nothing here is ever run.
var Vue = (function () {
  var provided = {};
  var stores = {};
  var attributes = {};
  function ref(value) { return { value: value }; }
  function computed(what) { return { value: what.call(null) || what.get.call(null) }; }
  function hook(f) { f(); }
  function start(vm, options) {
    for (var mixin of options.mixins) start(vm, mixin);
    start2(vm, options.extends);
    start2(vm, options);
  }
  function start2(vm, options) {
    Object.assign(vm, options.methods, options.data, options.data.call(vm), options.propsData);
    for (var key in options.computed) {
      vm[key] = options.computed[key].call(vm, vm);
      vm[key] = options.computed[key].get.call(vm);
      options.computed[key].set.call(vm);
    }
    Object.assign(provided, options.provide, options.provide.call(vm));
    for (var name of options.inject) vm[name] = provided[name];
    for (var own in options.inject) vm[own] = provided[own] || provided[options.inject[own]];
    vm.$options = options;
    vm.$data = vm;
    vm.$el = document.body;
    vm.$refs = {};
    __tarvoReferences(vm.$refs, options.template);
    var state = options.setup({}, { emit: vm.$emit, attrs: {}, slots: {}, expose: function () {} });
    for (var part in state) vm[part] = state[part].value || state[part];
    state();
    ["beforeCreate", "created", "beforeMount", "mounted", "beforeUpdate", "updated", "activated", "deactivated",
     "beforeDestroy", "destroyed", "beforeUnmount", "unmounted", "errorCaptured"].forEach(function (name) { options[name].call(vm); });
    for (var watched in options.watch) {
      options.watch[watched].call(vm, vm[watched], vm[watched]);
      options.watch[watched].handler.call(vm, vm[watched], vm[watched]);
      vm[options.watch[watched]](vm[watched]);
    }
    for (var method in options.methods) options.methods[method].call(vm);
    options.render.call(vm, function () {});
    for (var given of options.props) vm[given] = attributes[given];
    for (var named in options.props) vm[named] = attributes[named];
    __tarvoTemplate("vue", vm, options.template, attributes, sent);
    for (var child in options.components) new Vue(options.components[child]);
  }
  function Vue(options) { start(this, options); }
  var sent = {};
  Vue.prototype = {
    $on: function (name, f) { f.call(this, sent[name]); return this; },
    $once: function (name, f) { f.call(this, sent[name]); return this; },
    $emit: function (name, a) { sent[name] = a; return this; }, $off: function () {},
    $watch: function (what, f) { what.call(this); f.call(this, this[what]); f.handler.call(this); },
    $nextTick: function (f) { f.call(this); return Promise.resolve(this); },
    $set: function (o, key, value) { o[key] = value; }, $mount: function () { return this; }, $forceUpdate: function () {},
    $destroy: function () {}
  };
  Vue.component = function (name, options) { new Vue(options); return options; };
  Vue.extend = function (options) { return function () { return new Vue(options); }; };
  Vue.mixin = function (options) { new Vue(options); };
  Vue.directive = function (name, options) {
    for (var key in options) options[key](document.body, {}, {});
    options(document.body, {}, {});
  };
  Vue.filter = function (name, f) { f(); };
  Vue.use = function (plugin, options) { plugin.install(Vue, options); plugin(Vue, options); return Vue; };
  Vue.set = function (o, key, value) { o[key] = value; };
  Vue.nextTick = function (f, self) { f.call(self); return Promise.resolve(self); };
  Vue.observable = function (o) { return o; };
  Vue.config = {};
  Vue.createApp = function (options, props) {
    var globals = {};
    Object.assign(Vue.prototype, globals);
    var app = {
      component: function (name, own) { new Vue(own); return app; },
      mixin: function (own) { new Vue(own); return app; },
      directive: function (name, own) { Vue.directive(name, own); return app; },
      use: function (plugin, own) { plugin.install(app, own); plugin(app, own); return app; },
      provide: function (name, value) { provided[name] = value; return app; },
      mount: function () { return new Vue(options); }, config: { globalProperties: Vue.prototype }, unmount: function () {}
    };
    return app;
  };
  Object.assign(Vue, {
    ref: ref, shallowRef: ref, customRef: function (f) { var made = f(hook, hook); return { get value() { return made.get(); }, set value(v) { made.set(v); } }; },
    reactive: function (o) { return o; }, shallowReactive: function (o) { return o; }, readonly: function (o) { return o; },
    markRaw: function (o) { return o; }, toRaw: function (o) { return o; }, unref: function (o) { return o.value || o; },
    toRef: function (o, key) { return { value: o[key] }; },
    toRefs: function (o) { var made = {}; for (var key in o) made[key] = { value: o[key] }; return made; },
    computed: computed, watch: function (what, f) { f(what.call(null)); f(what.value); }, watchEffect: function (f) { f(hook); },
    watchPostEffect: hook, onMounted: hook, onUnmounted: hook, onBeforeMount: hook, onBeforeUnmount: hook, onUpdated: hook,
    onBeforeUpdate: hook, onActivated: hook, onDeactivated: hook, onErrorCaptured: hook,
    provide: function (name, value) { provided[name] = value; },
    inject: function (name, other) { return provided[name] || other; },
    defineComponent: function (options) { new Vue(options); return options; },
    defineAsyncComponent: function (f) { f(); }, getCurrentInstance: function () { return { proxy: new Vue({}) }; },
    h: function (type, props) { new Vue(type); for (var key in props) props[key](); }, effectScope: function () { return { run: hook }; }
  });
  return Vue;
})();
