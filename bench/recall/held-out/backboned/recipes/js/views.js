App.Views.Item = Backbone.View.extend({
  tagName: "li",
  template: _.template($("#item-template").html()),
  events: { "click": "open" },
  initialize: function () {
    this.listenTo(this.model, "change:favourite", this.mark);
    this.listenTo(this.model, "change", this.render);
  },
  render: function () {
    this.$el.html(this.template(this.model.toJSON()));
    return this;
  },
  mark: function () {
    this.viewer().SetBadge(this.model.get("favourite") ? "heart" : "none");     /* call: IMAGEVIEWER.SetBadge */
  },
  open: function () {
    var viewer = this.viewer();
    viewer.Open();
    viewer.ShowImage("img/" + this.model.cid + ".jpg");
    viewer.SetZoomArea(0, 0, 50, 50);                   /* call: IMAGEVIEWER.SetZoomArea */
    this.model.SetZoomArea(2);                          /* decoy */
    this.trigger("opened", viewer, this.model);
  },
  viewer: _.constant(App.plugins.viewer)
});

App.Views.List = Backbone.View.extend({
  el: "#app",
  initialize: function () {
    _.bindAll(this, "add", "onKey");
    this.listenTo(this.collection, "add", this.add);
    this.listenTo(this.collection, "reset", this.render);
    $(document).on("keydown", this.onKey);
  },
  render: function () {
    this.$el.empty();
    this.collection.each(this.add);
  },
  add: function (recipe) {
    var view = new App.Views.Item({ model: recipe });
    view.on("opened", function (plugin, model) {
      plugin.ShowCaption(model.get("title"));           /* call: IMAGEVIEWER.ShowCaption */
    });
    this.$el.append(view.render().el);
    view.open();
  },
  onKey: function (e) {
    var handler = this.keys[e.keyCode];
    if (handler) { this[handler](this.collection.first()); }
  },
  keys: { 403: "favourite", 404: "search", 405: "portions", 406: "clear", 457: "quota" },
  favourite: function (recipe) { if (recipe) { recipe.toggle(); } },
  search: function () {
    var k = App.plugins.keyboard;
    k.SetLayout("qwerty");
    k.EnablePrediction(true);                           /* call: KEYBOARD.EnablePrediction */
    k.Show();
    _.defer(_.bind(function () {
      this.SetPlaceholder("Recipe");                    /* call: KEYBOARD.SetPlaceholder */
    }, k));
    _.invoke([k], "AddDictionary", this.collection.pluck("title"));     /* call: KEYBOARD.AddDictionary */
  },
  portions: function (recipe) { if (recipe) { recipe.scale(recipe.get("portions") + 1); } },
  clear: function () {
    // App.plugins.storage.DropTag("recipe") is too dangerous     /* decoy */
    this.collection.reset();
    this.collection.fetch();
  },
  quota: function () {
    var p = _.result(App, "quotaPlugin");
    document.title = p.GetQuota() + " " + p.GetQuotaHint();     /* call: STORAGE.GetQuotaHint */
  }
});
