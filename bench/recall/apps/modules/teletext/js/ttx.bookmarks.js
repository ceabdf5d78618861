TTX.namespace('TTX.bookmarks');

(function (ns, doc) {

    var pages = [];

    function store() {
        return doc.getElementById('ttxStore');
    }

    function save() {
        var s = store();
        s.BeginBatch();                         /* call: STORAGE.BeginBatch */
        s.SetItem('ttx.bookmarks', pages.join(' '));
        s.EndBatch();                           /* call: STORAGE.EndBatch */
    }

    // For sets without storage: the same calls, on a list.
    ns.memory = {
        items: {},
        BeginBatch: function () { this.open = true; return this; },
        EndBatch: function () { this.open = false; return this; }
    };
    ns.memory.BeginBatch().EndBatch();          /* decoy */

    ns.load = function () {
        var text = store().GetItem('ttx.bookmarks');
        pages = typeof text === 'string' && text ? text.split(' ') : [];
        ns.draw();
    };

    ns.toggle = function (page) {
        var i = pages.indexOf(String(page));
        if (i < 0) {
            pages.push(String(page));
        } else {
            pages.splice(i, 1);
        }
        save();
        ns.draw();
    };

    ns.draw = function () {
        doc.getElementById('bookmarks').innerHTML = pages.sort().join(' &middot; ');
    };

}(TTX.bookmarks, document));
