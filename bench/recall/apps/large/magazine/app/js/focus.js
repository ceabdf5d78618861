/* Spatial navigation among elements with the class "focusable". */
MAG.focus = MAG.create(MAG.Events, {
    current: null,

    all: function () {
        return Array.prototype.slice.call(document.querySelectorAll(".focusable"));
    },

    set: function (element) {
        if (this.current) {
            this.current.className = this.current.className.replace(/ ?\bfocus\b/, "");
        }
        this.current = element || null;
        if (element) {
            element.className += " focus";
            this.trigger("moved", element);
        }
    },

    first: function () {
        this.set(this.all()[0]);
    },

    distance: function (from, to, dx, dy) {
        var a = from.getBoundingClientRect(), b = to.getBoundingClientRect();
        var x = (b.left + b.right - a.left - a.right) / 2, y = (b.top + b.bottom - a.top - a.bottom) / 2;
        if (x * dx + y * dy <= 0) {
            return Infinity;
        }
        return dx ? Math.abs(x) + 3 * Math.abs(y) : Math.abs(y) + 3 * Math.abs(x);
    },

    move: function (dx, dy) {
        var best = null, least = Infinity, self = this;
        if (!this.current || !document.contains(this.current)) {
            return this.first();
        }
        this.all().forEach(function (element) {
            var d = element === self.current ? Infinity : self.distance(self.current, element, dx, dy);
            if (d < least) {
                least = d;
                best = element;
            }
        });
        if (best) {
            this.set(best);
        }
    },

    press: function () {
        if (this.current) {
            this.current.click();
        }
    }
});
