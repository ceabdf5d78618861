/* Base: objects, events, strings. Nothing of it knows the set. */
var MAG = window.MAG || {};

MAG.extend = function (target) {
    for (var i = 1; i < arguments.length; i++) {
        for (var k in arguments[i]) {
            if (Object.prototype.hasOwnProperty.call(arguments[i], k)) {
                target[k] = arguments[i][k];
            }
        }
    }
    return target;
};

MAG.create = function (parent, members) {
    return MAG.extend(Object.create(parent), members);
};

MAG.Events = {
    on: function (name, handler, context) {
        this._handlers = this._handlers || {};
        (this._handlers[name] = this._handlers[name] || []).push({ handler: handler, context: context || this });
        return this;
    },
    off: function (name) {
        if (this._handlers) {
            delete this._handlers[name];
        }
        return this;
    },
    trigger: function (name) {
        var args = Array.prototype.slice.call(arguments, 1);
        var list = (this._handlers && this._handlers[name]) || [];
        list.slice().forEach(function (h) { h.handler.apply(h.context, args); });
        return this;
    }
};

MAG.format = function (text) {
    var args = arguments;
    return text.replace(/\{(\d+)\}/g, function (all, n) { return args[+n + 1]; });
};

MAG.escape = function (text) {
    return String(text).replace(/[&<>"]/g, function (c) {
        return { "&": "&amp;", "<": "&lt;", ">": "&gt;", '"': "&quot;" }[c];
    });
};

MAG.element = function (id) {
    return document.getElementById(id);
};

MAG.plugin = function (name) {
    return MAG.element("plugin" + name.charAt(0).toUpperCase() + name.slice(1));
};

MAG.get = function (url, done, failed) {
    var xhr = new XMLHttpRequest();
    xhr.open("GET", url);
    xhr.onload = function () {
        if (xhr.status >= 200 && xhr.status < 300) {
            done(JSON.parse(xhr.responseText));
        } else if (failed) {
            failed(xhr.status);
        }
    };
    xhr.onerror = function () {
        if (failed) {
            failed(0);
        }
    };
    xhr.send();
};
