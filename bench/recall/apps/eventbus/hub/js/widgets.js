function Toast(id) { this.node = document.getElementById(id); this.level = 0; }
Toast.prototype.Flash = function (text) { this.node.textContent = text; };
Toast.prototype.SetLevel = function (level) { this.level = level; };
Toast.prototype.Dismiss = function () { this.node.textContent = ''; };

function InputList(id) { this.node = document.getElementById(id); this.rows = []; }
InputList.prototype.AddRow = function (name) { this.rows.push(name); return this; };
InputList.prototype.Relabel = function (n, name) { this.rows[n] = name; };
InputList.prototype.Paint = function () {
    this.node.innerHTML = this.rows.map(function (row) { return '<b>' + row + '</b>'; }).join('');
};

Bus.on('ui:toast', function (toast) {
    toast.SetLevel(2);                              /* decoy */
    toast.Flash('Welcome');                         /* decoy */
    setTimeout(function () { toast.Dismiss(); }, 60);       /* decoy */
});

Bus.on('ui:list', function (list, count) {
    for (var i = 0; i < count; i++) {
        list.AddRow('HDMI ' + (i + 1));             /* decoy */
    }
    list.Relabel(0, 'Player');                      /* decoy */
    list.Paint();                                   /* decoy */
});
