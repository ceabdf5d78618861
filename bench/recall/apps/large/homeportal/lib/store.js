/* What the portal keeps. Entries are records, or - under "device:" - the plug-ins that are used. */
Portal.store = (function () {
    var entries = {}, watchers = [];

    function Record(key, data) { this.key = key; this.data = data; this.dirty = false; }
    Record.prototype.Touch = function () { this.dirty = true; return this; };
    Record.prototype.Merge = function (data) {
        for (var name in data) { this.data[name] = data[name]; }
        return this.Touch();                                    /* decoy */
    };
    Record.prototype.Purge = function () { this.data = {}; };

    return {
        Put: function (key, data) {
            entries[key] = new Record(key, data);
            watchers.forEach(function (fn) { fn(entries[key]); });
            return entries[key];
        },
        Record: function (key) { return entries[key]; },
        device: function (id) {
            var key = 'device:' + id;
            return entries[key] || (entries[key] = document.getElementById(id));
        },
        watch: function (fn) { watchers.push(fn); },
        purge: function () {
            Object.keys(entries).forEach(function (key) {
                if (key.indexOf('device:') !== 0) {
                    entries[key].Purge();                       /* decoy */
                }
            });
        }
    };
}());
