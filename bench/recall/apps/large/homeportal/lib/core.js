/*! portal core 3.2 */
var Portal = Portal || {};

Portal.ns = function (path) {
    return path.split('.').reduce(function (at, name) { return (at[name] = at[name] || {}); }, Portal);
};

Portal.inherit = function (Child, Parent, members) {
    function F() {}
    F.prototype = Parent.prototype;
    Child.prototype = new F();
    Child.prototype.constructor = Child;
    Child.parent = Parent.prototype;
    for (var name in members) {
        Child.prototype[name] = members[name];
    }
    return Child;
};

Portal.proxy = function (fn, self) {
    var bound = [].slice.call(arguments, 2);
    return function () { return fn.apply(self, bound.concat([].slice.call(arguments))); };
};

/* A component can be mounted into the stage, told of keys, and taken away. */
Portal.Component = function (name) {
    this.name = name;
    this.node = document.createElement('section');
    this.mounted = false;
};
Portal.Component.prototype = {
    Mount: function (parent) {
        parent.appendChild(this.node);
        this.mounted = true;
        this.Refresh();                                         /* decoy */
    },
    Unmount: function () {
        if (this.mounted) {
            this.node.parentNode.removeChild(this.node);
            this.mounted = false;
        }
    },
    Refresh: function () { this.node.innerHTML = this.Html(); },        /* decoy */
    Html: function () { return this.name; },
    Key: function () { return false; }
};

/* Messages of the portal, in the language of the viewer. */
Portal.Texts = {
    table: { en: { hello: 'Hello', buy: 'Buy' }, de: { hello: 'Hallo', buy: 'Kaufen' } },
    language: 'en',
    Translate: function (key) { return this.table[this.language][key] || key; },
    Switch: function (language) { this.language = language; }
};
