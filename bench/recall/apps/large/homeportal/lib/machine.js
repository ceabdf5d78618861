/* A state machine: rows are [state, event, next state, action]. The action is a method of the owner. */
Portal.Machine = function (owner, rows, start) {
    this.owner = owner;
    this.rows = rows;
    this.state = start;
};
Portal.Machine.prototype.Fire = function (event) {
    for (var i = 0; i < this.rows.length; i++) {
        var row = this.rows[i];
        if (row[0] === this.state && row[1] === event) {
            this.state = row[2];
            return row[3] && this.owner[row[3]](event);         /* decoy */
        }
    }
    return null;
};
Portal.Machine.prototype.Reset = function (state) { this.state = state; };

/* A timer that can be wound up again. */
Portal.Timer = function (ms, fn) { this.ms = ms; this.fn = fn; };
Portal.Timer.prototype = {
    Wind: function () {
        this.Halt();                                            /* decoy */
        this.handle = setTimeout(this.fn, this.ms);
        return this;
    },
    Halt: function () { clearTimeout(this.handle); }
};
