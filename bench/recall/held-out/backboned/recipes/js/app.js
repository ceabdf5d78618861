App.quotaPlugin = function () { return _.property("storage")(App.plugins); };
$(function () {
  var recipes = new App.Models.Recipes();
  App.list = new App.Views.List({ collection: recipes });
  recipes.add([{ title: "Bean stew", minutes: 50 }, { title: "Apple cake", minutes: 70 }]);

  var Router = Backbone.Router.extend({
    routes: { "favourites": "favourites", "cook/:step": "cook" },
    favourites: function () {
      App.plugins.storage.Touch("favourites");          /* call: STORAGE.Touch */
    },
    cook: function (step) {
      App.plugins.viewer.ShowStep(step);                /* call: IMAGEVIEWER.ShowStep */
    }
  });
  App.router = new Router();
  Backbone.history.start();
  App.router.navigate("favourites", { trigger: true });
  App.router.navigate("cook/2", { trigger: true });
  App.list.trigger("viewer.Beep()");                    /* decoy */
});
