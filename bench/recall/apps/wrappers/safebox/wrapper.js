// Lets only those methods through that we have agreed upon. Others are answered here.
var Journal = {
    lines: [],
    Write: function (text) {
        this.lines.push(text);
        document.getElementById('journal').textContent = this.lines.slice(-5).join('\n');
    },
    Rotate: function () { this.lines = this.lines.slice(-100); },
    Seal: function () { this.Write('-- ' + this.lines.length + ' --'); }        /* decoy */
};

function Guarded(device, allowed) {
    this.device = device;
    this.allowed = allowed;
}

Guarded.prototype.Call = function (name) {
    var args = Array.prototype.slice.call(arguments, 1);
    if (this.allowed.indexOf(name) < 0) {
        Journal.Write('refused: ' + name);                      /* decoy */
        return null;
    }
    return this.device[name].apply(this.device, args);          /* call: SECURITY.LockOut, SECURITY.UnlockAll, CRYPTO.WipeKeys */
};

// Only documented ones: for pages of others.
function Strict(device) { Guarded.call(this, device, ['CheckPin', 'GetRatingLimit', 'CreateHash', 'Sign', 'Verify']); }
Strict.prototype = new Guarded();
Strict.prototype.constructor = Strict;

// Calls what is there, on objects of the page.
function invoke(object, name, value) {
    return typeof object[name] === 'function' ? object[name](value) : undefined;        /* decoy */
}

function ask(object, name, value) {
    return object[name](value);                                 /* call: SECURITY.ReadCounter */
}
