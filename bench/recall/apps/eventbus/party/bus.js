// Publishes and subscribes. Topics have parts: "song/start"; "song/*" hears all of songs.
var Bus = (function () {
  var topics = {};
  function match(topic) {
    var found = (topics[topic] || []).slice();
    var star = topic.replace(/\/.*$/, '/*');
    return found.concat(topics[star] || []);
  }
  return {
    subscribe: function (topic, listener) {
      (topics[topic] = topics[topic] || []).push(listener);
      return function () {
        topics[topic] = topics[topic].filter(function (one) { return one !== listener; });
      };
    },
    publish: function (topic, data) {
      match(topic).forEach(function (listener) { listener(data, topic); });
    },
    once: function (topic, listener) {
      var off = this.subscribe(topic, function (data, name) {
        off();
        listener(data, name);
      });
    },
    request: function (topic) {
      return new Promise(function (resolve) { Bus.publish(topic, { reply: resolve }); });
    }
  };
}());
