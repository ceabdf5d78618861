// The interface of all adapters: open, play, rate, sound, picture, info.
var Adapters = {
    list: [],
    add: function (name, test, make) {
        this.list.push({ name: name, test: test, make: make });
    },
    named: function (name) {
        for (var i = 0; i < this.list.length; i++) {
            if (this.list[i].name === name) { return this.list[i].make(); }
        }
        return null;
    },
    best: function () {
        for (var i = 0; i < this.list.length; i++) {
            if (this.list[i].test()) { return this.list[i].make(); }
        }
        return null;
    }
};
