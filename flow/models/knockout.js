// What Knockout does, as far as objects flow through it. Nothing here is ever run.
var ko = (function () {
  function observable(first) {
    var value = first;
    function self(next) { value = next; return arguments.length ? this : value; }
    self.subscribe = function (f, own) { f.call(own, value); return { dispose: function () {} }; };
    self.peek = function () { return value; };
    self.extend = function () { return self; };
    self.valueHasMutated = function () {};
    self.notifySubscribers = function (next) { value = next; };
    return self;
  }
  function observableArray(list) {
    var value = list || [];
    var self = observable(value);
    ["push", "unshift", "pop", "shift", "splice", "slice", "sort", "reverse", "indexOf", "concat"].forEach(function (name) {
      self[name] = function (a, b, c) { return value[name](a, b, c); };
    });
    self.remove = function (f) { for (var e of value) f(e); return value; };
    self.removeAll = function () { return value; };
    return self;
  }
  function computed(what, own) {
    var result = observable();
    result(what.call(own));
    result(what.read.call(what.owner || own));
    function self(next) {
      what.write.call(what.owner || own, next);
      return result();
    }
    return Object.assign(self, result);
  }
  var ko = {
    observable: observable, observableArray: observableArray, computed: computed, dependentObservable: computed,
    pureComputed: computed, unwrap: function (v) { return v() || v; }, bindingHandlers: {}, components: {
      register: function (name, options) {
        var made = new options.viewModel({});
        options.viewModel.createViewModel({}, {});
      }
    },
    isObservable: function () {}, toJS: function (v) { return v; },
    applyBindings: function (model, node) {
      for (var name in ko.bindingHandlers) {
        for (var key in model) {
          var value = function () { return model[key]; };
          ko.bindingHandlers[name].init(document.body, value, value, model);
          ko.bindingHandlers[name].update(document.body, value, value, model);
        }
      }
      for (var key in model) model[key].call(model, model, {});
      __tarvoTemplate("knockout", model);
    },
    utils: {
      arrayForEach: function (list, f) { for (var e of list) f(e, 0); },
      arrayMap: function (list, f) { return list.map(f); }, arrayFilter: function (list, f) { return list.filter(f); },
      arrayFirst: function (list, f) { return list.find(f); }, unwrapObservable: function (v) { return v() || v; },
      extend: function (a, b) { return Object.assign(a, b); },
      objectForEach: function (o, f) { for (var key in o) f(key, o[key]); },
      registerEventHandler: function (node, name, f) { f.call(node, { target: node }); },
      domNodeDisposal: { addDisposeCallback: function (node, f) { f(node); } }
    },
    tasks: { schedule: function (f) { f(); } }, subscribable: function () { return observable(); }
  };
  ko.applyBindingsToNode = ko.applyBindings;
  return ko;
})();
