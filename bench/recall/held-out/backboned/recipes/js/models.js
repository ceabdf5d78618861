var App = window.App || { Models: {}, Views: {}, plugins: {} };

_.each(["storage", "viewer", "keyboard"], function (id) {
  App.plugins[id] = document.getElementById(id);
});

App.Models.Recipe = Backbone.Model.extend({
  defaults: { title: "", minutes: 30, favourite: false, portions: 4 },
  toggle: function () {
    this.set("favourite", !this.get("favourite"));
    return this.save();
  },
  scale: function (n) { this.set("portions", Math.max(1, n)); },
  // Not the viewer's: scales the text of the recipe.
  SetZoomArea: function (n) { this.set("zoom", n); }
});

App.Models.Recipes = Backbone.Collection.extend({
  model: App.Models.Recipe,
  comparator: "title",
  favourites: function () { return this.where({ favourite: true }); }
});

// Models are kept by the storage plug-in.
Backbone.sync = function (method, model, options) {
  var plugin = App.plugins.storage, key = "recipe-" + model.cid;
  switch (method) {
    case "create":
    case "update":
      plugin.SetItem(key, JSON.stringify(model));
      plugin.TagItem(key, "recipe");                    /* call: STORAGE.TagItem */
      break;
    case "delete":
      plugin.RemoveItem(key);
      break;
    case "read":
      plugin.QueryByTag("recipe");                      /* call: STORAGE.QueryByTag */
      break;
  }
  if (options && options.success) { options.success(model.toJSON ? null : []); }
};
