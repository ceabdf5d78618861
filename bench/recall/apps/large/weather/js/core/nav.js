// Focus on a grid: elements with data-row and data-column; keys move it.
var Nav = (function (_) {
    var stack = [];

    function Layer(root, options) {
        this.root = root;
        this.options = _.defaults(options || {}, { wrap: false, onEnter: _.noop, onBack: _.noop });
        this.row = 0;
        this.column = 0;
    }

    Layer.prototype.items = function () {
        return _.toArray(this.root.querySelectorAll("[data-row]"));
    };

    Layer.prototype.find = function (row, column) {
        return _.find(this.items(), function (item) {
            return Number(item.getAttribute("data-row")) === row && Number(item.getAttribute("data-column")) === column;
        });
    };

    Layer.prototype.move = function (rows, columns) {
        var next = this.find(this.row + rows, this.column + columns);
        if (!next && this.options.wrap) {
            next = this.find(rows ? 0 : this.row, columns ? 0 : this.column);
        }
        if (next) {
            this.row = Number(next.getAttribute("data-row"));
            this.column = Number(next.getAttribute("data-column"));
            this.mark();
        }
        return !!next;
    };

    Layer.prototype.mark = function () {
        var focused = this.find(this.row, this.column);
        _.each(this.items(), function (item) {
            item.className = item.className.replace(/\bon\b/g, "").trim() + (item === focused ? " on" : "");
        });
    };

    Layer.prototype.enter = function () {
        var focused = this.find(this.row, this.column);
        if (focused) {
            this.options.onEnter(focused.getAttribute("data-action"), focused);
        }
    };

    var MOVES = { 37: [0, -1], 38: [-1, 0], 39: [0, 1], 40: [1, 0] };

    document.addEventListener("keydown", function (event) {
        var layer = _.last(stack);
        if (!layer) {
            return;
        }
        if (MOVES[event.keyCode]) {
            layer.move.apply(layer, MOVES[event.keyCode]);
        } else if (event.keyCode === 13) {
            layer.enter();
        } else if (event.keyCode === 8 || event.keyCode === 461 || event.keyCode === 10009) {
            layer.options.onBack();
        }
    }, false);

    return {
        push: function (root, options) {
            var layer = new Layer(root, options);
            stack.push(layer);
            layer.mark();
            return layer;
        },
        pop: function () { return stack.length > 1 ? stack.pop() : null; },
        depth: function () { return stack.length; }
    };
}(_));
