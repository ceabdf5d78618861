var PREFIX = "PVR_";

function Recording(data) {
    this.id = data.id;
    this.title = data.title;
    this.length = data.length;
    this.seen = !!data.seen;
    this.locked = false;
}

Recording.prototype.protect = function () {
    this.locked = !this.locked;
    return Bridge.run("PVR_Protect", this.id);                  /* also: KOB.PVR_Protect */
};

Recording.prototype.rename = function (title) {
    this.title = title;
    Bridge.run(PREFIX + "Rename", [this.id, title]);            /* also: KOB.PVR_Rename */
};

Recording.prototype.remove = function () {
    document.getElementById("rec").DeleteRecording(this.id);
    document.getElementById("rec").EmptyTrash();                /* call: RECORDER.EmptyTrash */
};

Recording.prototype.index = function () {
    Bridge.later("PVR_Index", this.id);                         /* also: KOB.PVR_Index */
    Bridge.later("PVR_Thumbnail", this.id);                     /* also: KOB.PVR_Thumbnail */
};

var Recordings = {
    all: [],
    load: function () {
        var answer = Bridge.run("PVR_List", 0);                 /* also: KOB.PVR_List */
        var text = typeof answer === "string" ? answer : "[]";
        var list = JSON.parse(text);
        if (!list.length) {
            list = [{ id: 1, title: "The Lighthouse", length: 5400 }, { id: 2, title: "Late Show", length: 3600, seen: true },
                { id: 3, title: "Match of the week", length: 7200 }];
        }
        this.all = list.map(function (one) { return new Recording(one); });
        this.all.forEach(function (one) { one.index(); });
    },
    unseen: function () {
        return this.all.filter(function (one) { return !one.seen; });
    }
};
