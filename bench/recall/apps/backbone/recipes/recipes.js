var App = { Models: {}, Views: {}, vent: _.extend({}, Backbone.Events) };

App.Models.Recipe = Backbone.Model.extend({
  defaults: { title: '', minutes: 30, step: 0, steps: [] },
  next: function () {
    var step = this.get('step') + 1;
    this.set('step', step % Math.max(1, this.get('steps').length));
    return this;
  }
});

App.Models.Recipes = Backbone.Collection.extend({
  model: App.Models.Recipe,
  url: 'http://recipes.example/all',
  comparator: 'minutes',
  quick: function () {
    return this.filter(function (recipe) { return recipe.get('minutes') <= 20; });
  }
});

App.Models.Timer = Backbone.Model.extend({
  initialize: function (attributes, options) {
    this.plugin = options.plugin;
    this.on('change:minutes', this.arm, this);
  },
  arm: function (model, minutes) {
    this.plugin.StartKitchenTimer(minutes * 60);               /* call: CLOCK.StartKitchenTimer */
    this.plugin.GetUptime();
  },
  stop: function () {
    this.plugin.CancelAlarm();
    this.plugin.ClearKitchenTimer();                           /* call: CLOCK.ClearKitchenTimer */
  },
  // In the stand-alone version the timer speaks itself.
  AnnounceStep: function (n) { this.set('said', n); }
});

App.Views.List = Backbone.View.extend({
  el: '#app .list',
  template: _.template($('#recipe-template').html()),
  initialize: function () {
    this.listenTo(this.collection, 'add reset change', this.render);
    _.bindAll(this, 'render');
  },
  render: function () {
    this.$el.html(this.collection.map(function (recipe) { return this.template(recipe.toJSON()); }, this).join(''));
    return this;
  }
});

App.Views.Cook = Backbone.View.extend({
  el: '#app',
  events: {
    'click .start': 'start',
    'mouseover .steps': 'read'
  },
  initialize: function (options) {
    this.note = options.plugins.note;
    this.mic = options.plugins.mic;
    this.timer = options.timer;
    this.listenTo(this.model, 'change:step', this.show);
    this.listenTo(App.vent, 'voice', function (mic) {
      mic.SetWakeWord('chef');                                 /* call: MICROPHONE.SetWakeWord */
    });
  },
  start: function () {
    this.timer.set('minutes', this.timer.get('minutes') + 1);
    this.note.KeepOnTop(true);                                 /* call: NOTIFICATION.KeepOnTop */
    App.vent.trigger('voice', this.mic);
    return false;
  },
  read: function () {
    this.mic.PauseRecognition(5);                              /* call: MICROPHONE.PauseRecognition */
  },
  show: function (model, step) {
    var text = model.get('steps')[step];
    this.$('.steps').text(text);
    this.note.ShowMessage(text);
    this.note.AnnounceStep(step);                              /* call: NOTIFICATION.AnnounceStep */
    this.timer.AnnounceStep(step);                             /* decoy */
  }
});

$(function () {
  var plugins = {};
  _.each(['timer', 'mic', 'note'], function (id) { plugins[id] = document.getElementById(id); });

  var recipes = new App.Models.Recipes([
    { title: 'Pancakes', minutes: 20, steps: ['Mix', 'Wait', 'Bake'] },
    { title: 'Goulash', minutes: 120, steps: ['Cut', 'Fry', 'Simmer'] }
  ]);
  var timer = new App.Models.Timer({ minutes: 1 }, { plugin: plugins.timer });
  var list = new App.Views.List({ collection: recipes }).render();
  var cook = new App.Views.Cook({ model: recipes.first(), timer: timer, plugins: plugins });

  recipes.fetch({ error: function () {
    plugins.note.ShowOfflineBadge('recipes');                  /* call: NOTIFICATION.ShowOfflineBadge */
  } });

  $(document).on('keydown', function (e) {
    if (e.which === 13) { cook.model.next(); }
    if (e.which === 403) { timer.stop(); }
    if (e.which === 404) { _.invoke([plugins.mic], 'TrainSpeaker', 'me'); }   /* call: MICROPHONE.TrainSpeaker */
    if (e.which === 405) { _.result({ tick: _.bind(plugins.timer.LapTime, plugins.timer) }, 'tick'); }   /* call: CLOCK.LapTime */
    if (e.which === 406) { recipes.quick()[0].set('hint', 'mic.StopListening()'); }   /* decoy */
  });
});
