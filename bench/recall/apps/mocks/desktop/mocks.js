// For the browser of the desk: what the set has, without the set.
var mocks = {
    account: {
        name: 'developer',
        SignIn: function () { this.signedIn = true; },
        GetUserName: function () { return this.name; },
        GetAvatar: function () { return 'avatar.png'; },
        GetFriends: function () { return ['Ann', 'Bob']; },
        PostScore: function (n) { this.score = n; }
    },
    storage: {
        items: {},
        GetItem: function (key) { return this.items[key]; },
        SetItem: function (key, value) { this.items[key] = value; },
        Transaction: function (fn) { fn(this); },
        Vacuum: function () { this.items = {}; }
    },
    pad: {
        GetPadCount: function () { return 0; },
        SetLed: function () {},
        Poll: function () { return null; }
    },
    haptic: { Rumble: function () {}, Play: function () {} }
};
