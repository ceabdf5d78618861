MAG.data = MAG.create(MAG.Events, {
    issue: null,
    read: {},

    load: function () {
        var self = this;
        MAG.get("data/issue.json", function (issue) {
            self.issue = issue;
            self.trigger("loaded", issue);
        }, function (status) {
            self.trigger("failed", status);
        });
    },

    section: function (id) {
        return this.issue.sections.filter(function (s) { return s.id === id; })[0];
    },

    article: function (id) {
        var found = null;
        this.issue.sections.forEach(function (s) {
            s.articles.forEach(function (a) {
                if (a.id === id) {
                    found = a;
                }
            });
        });
        return found;
    },

    markRead: function (id) {
        this.read[id] = true;
        this.trigger("read", id, Object.keys(this.read).length);
    },

    SyncReadingList: function () {
        return Object.keys(this.read);
    }
});

MAG.data.on("read", function (id, count) {
    var account = MAG.plugin("account");
    if (count > 1) {
        account.SyncReadingList(Object.keys(MAG.data.read).join());     /* call: ACCOUNT.SyncReadingList */
    }
});

MAG.data.on("loaded", function (issue) {
    MAG.element("footer").innerHTML = MAG.i18n.text("issue", issue.number) + " " + this.SyncReadingList().length;   /* decoy */
});
