function IndexView(node) {
    this.node = node;
    this.pages = [100, 101, 200, 300, 888];
    this.cursor = 0;
    this.open = false;
}
IndexView.prototype.MoveCursor = function (by) {
    this.cursor = (this.cursor + by + this.pages.length) % this.pages.length;
    this.Redraw();                                      /* decoy */
};
IndexView.prototype.OpenSelected = function () {
    teletext.ShowPage(this.pages[this.cursor]);
};
IndexView.prototype.Expand = function () { this.open = true; this.Redraw(); };          /* decoy */
IndexView.prototype.Collapse = function () { this.open = false; this.Redraw(); };       /* decoy */
IndexView.prototype.Redraw = function () {
    this.node.innerHTML = this.pages.map(function (page, n) {
        return n === this.cursor ? "<b>" + page + "</b>" : page;
    }, this).join(this.open ? "<br>" : " ");
};

function Entry(node) { this.node = node; this.digits = ""; }
Entry.prototype = {
    constructor: Entry,
    AddDigit: function (digit) {
        this.digits += digit;
        if (this.digits.length === 3) {
            this.Finish();                              /* decoy */
        }
        this.Echo();                                    /* decoy */
    },
    DeleteDigit: function () { this.digits = this.digits.slice(0, -1); this.Echo(); },      /* decoy */
    Abandon: function () { this.digits = ""; this.Echo(); },                                /* decoy */
    Finish: function () {
        var page = +this.digits;
        this.digits = "";
        teletext.PrefetchPage(page);                    /* call: TELETEXT.PrefetchPage */
        teletext.ShowPage(page);
    },
    Echo: function () { this.node.innerHTML = this.digits; }
};
