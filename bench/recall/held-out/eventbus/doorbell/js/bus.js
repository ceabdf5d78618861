var Bus = (function () {
  var topics = {}, wildcards = [];
  return {
    subscribe: function (topic, fn, context) {
      if (/\*$/.test(topic)) {
        wildcards.push({ prefix: topic.slice(0, -1), fn: fn, context: context });
        return;
      }
      (topics[topic] = topics[topic] || []).push({ fn: fn, context: context });
    },
    publish: function (topic, data) {
      (topics[topic] || []).forEach(function (s) { s.fn.call(s.context || null, data, topic); });
      wildcards.forEach(function (w) {
        if (topic.indexOf(w.prefix) === 0) { w.fn.call(w.context || null, data, topic); }
      });
    }
  };
}());
