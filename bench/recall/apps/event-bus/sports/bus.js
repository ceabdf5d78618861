/* Publish / subscribe with wild cards: "score.*" gets "score.goal". */
var bus = (function () {
    var subscriptions = [];

    function matches(pattern, topic) {
        if (pattern === topic || pattern === "*") {
            return true;
        }
        return pattern.slice(-2) === ".*" && topic.indexOf(pattern.slice(0, -1)) === 0;
    }

    return {
        subscribe: function (pattern, handler, context) {
            var s = { pattern: pattern, handler: handler, context: context };
            subscriptions.push(s);
            return s;
        },
        unsubscribe: function (s) {
            subscriptions.splice(subscriptions.indexOf(s), 1);
        },
        publish: function (topic, data) {
            subscriptions.slice().forEach(function (s) {
                if (matches(s.pattern, topic)) {
                    s.handler.call(s.context, data, topic);
                }
            });
        },
        publishLater: function (topic, data) {
            setTimeout(function () { bus.publish(topic, data); }, 0);
        }
    };
}());
