// A plug-in for the framework: every component has $plugins.
var TvPlugins = {
  install: function (Vue, options) {
    var found = {};
    Object.keys(options.ids).forEach(function (name) {
      Object.defineProperty(found, name, {
        get: function () { return document.getElementById(options.ids[name]); }
      });
    });
    Vue.prototype.$plugins = found;
    Vue.prototype.$tv = function (name, method) {
      var rest = [].slice.call(arguments, 2);
      return found[name][method].apply(found[name], rest);     /* call: STORAGE.TouchItem */
    };
  }
};
Vue.use(TvPlugins, { ids: { p: 'p', a: 'a', s: 's' } });
