MAG.scenes = {};

MAG.Scene = {
    show: function () {
        MAG.element("scene").innerHTML = this.html();
        MAG.focus.first();
    },
    html: function () { return ""; },
    hide: function () {},
    key: function () { return false; }
};

MAG.scenes.sections = MAG.create(MAG.Scene, {
    html: function () {
        return MAG.data.issue.sections.map(function (s) {
            return '<div class="focusable" data-section="' + s.id + '">' + MAG.escape(s.title) + "</div>";
        }).join("");
    }
});

MAG.scenes.section = MAG.create(MAG.Scene, {
    id: "cover",
    html: function () {
        var section = MAG.data.section(this.id);
        return "<h1>" + MAG.escape(section.title) + "</h1>" + section.articles.map(function (a) {
            return '<p class="focusable" data-article="' + a.id + '">' + MAG.escape(a.title) + "</p>";
        }).join("");
    }
});

MAG.scenes.article = MAG.create(MAG.Scene, {
    id: 1,
    html: function () {
        var a = MAG.data.article(this.id);
        MAG.data.markRead(this.id);
        return "<h1>" + MAG.escape(a.title) + "</h1><p>" + MAG.escape(a.text) + "</p>" +
            (a.video ? '<button class="focusable" data-video="' + a.id + '">' + MAG.i18n.text("play") + "</button>" : "");
    },
    hide: function () {
        MAG.player.stop();
    },
    key: function (code) {
        if (code === 417 || code === 412) {
            MAG.player.jump(code === 417 ? 10 : -10);
            return true;
        }
        return false;
    }
});

MAG.router = {
    stack: [],

    current: function () {
        return this.stack[this.stack.length - 1];
    },

    open: function (name, values) {
        if (this.current()) {
            this.current().hide();
        }
        var scene = MAG.create(MAG.scenes[name], values || {});
        this.stack.push(scene);
        scene.show();
    },

    back: function () {
        if (this.stack.length > 1) {
            this.stack.pop().hide();
            this.current().show();
        }
    }
};
