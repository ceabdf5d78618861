(function (modules, entry) {
    var cache = {};
    function require(from, name) {
        var id = modules[from][1][name];
        if (!cache[id]) {
            var m = cache[id] = { exports: {} };
            modules[id][0].call(m.exports, require.bind(null, id), m, m.exports);
        }
        return cache[id].exports;
    }
    require(entry, ".");
})({
    1: [function (require, module, exports) {
        var plugins = require("./plugins"), Queue = require("./queue");
        var q = new Queue(plugins.downloader);
        q.add("a.bin").add("b.bin");
        plugins.files().LockRegion(0, 10);   /* call: FILESTORE.LockRegion */
        require("./late")(plugins);
        require("./queue").shared.flush();
        plugins.downloader.GetMirrorList();   /* call: DOWNLOADER.GetMirrorList */
    }, { ".": 1, "./plugins": 2, "./queue": 3, "./late": 4 }],
    2: [function (require, module, exports) {
        exports.downloader = document.getElementById("dl");
        exports.files = function () { return document.getElementById("fs"); };
        exports.downloader.SetUserAgent("tv/1");   /* call: DOWNLOADER.SetUserAgent */
        exports.fake = { SetUserAgent: function () { }, HashBlock: function () { } };
    }, {}],
    3: [function (require, module, exports) {
        var downloader = require("./plugins").downloader;
        function Queue(p) { this.p = p; }
        Queue.prototype.add = function (n) {
            this.p.Start(n);
            this.p.EnqueueUrgent(n);   /* call: DOWNLOADER.EnqueueUrgent */
            return this;
        };
        Queue.prototype.flush = function () { downloader.PurgeQueue(); };   /* call: DOWNLOADER.PurgeQueue */
        module.exports = Queue;
        module.exports.shared = new Queue(downloader);
    }, { "./plugins": 2 }],
    4: [function (require, module, exports) {
        module.exports = function late(plugins) {
            var files = plugins.files(), verify = require("../verify");
            verify.all(files);
            verify.one.call({ p: files });
            plugins.fake.HashBlock(1);   /* decoy */
            plugins.fake.SetUserAgent("x");   /* decoy */
        };
    }, { "../verify": 5 }],
    5: [function (require, module, exports) {
        "use strict";
        Object.defineProperty(exports, "__esModule", { value: true });
        exports.one = exports.all = void 0;
        var all = function (f) { f.HashBlock(0, 512); };   /* call: FILESTORE.HashBlock */
        exports.all = all;
        exports.one = function () { this.p.SetReadAhead(8); };   /* call: FILESTORE.SetReadAhead */
    }, {}]
}, 1);
