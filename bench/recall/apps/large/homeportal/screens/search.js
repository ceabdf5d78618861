/* Search over what the portal knows. The keyboard is that of the set, or the one that is drawn here. */
Portal.DrawnKeyboard = function () { this.text = ''; this.rows = ['qwe', 'asd']; };
Portal.DrawnKeyboard.prototype = {
    Show: function () { this.shown = true; },
    SetCandidates: function (n) { this.candidates = n; },
    PressKey: function (c) { this.text += c; },
    Backspace: function () { this.text = this.text.slice(0, -1); },
    ShiftCase: function () { this.text = this.text.toUpperCase(); }
};

Portal.SearchScreen = Portal.inherit(function () {
    Portal.Component.call(this, 'search');
    this.drawn = new Portal.DrawnKeyboard();
    this.typing = new Portal.Typing(Portal.store.device('keyboard'));
    this.machine = new Portal.Machine(this, [
        ['empty', 'digit', 'typed', 'Append'],
        ['typed', 'digit', 'typed', 'Append'],
        ['typed', 'ok', 'found', 'Find'],
        ['found', 'digit', 'typed', 'Append'],
        ['found', 'ok', 'empty', 'Forget']
    ], 'empty');
}, Portal.Component, {
    Html: function () { return '<i>' + this.drawn.text + '</i>'; },
    Append: function () {
        this.drawn.PressKey('x');                               /* decoy */
        this.Refresh();                                         /* decoy */
    },
    Find: function () {
        this.drawn.SetCandidates(3);                            /* decoy */
        this.typing.Suggest(this.drawn.text);                   /* decoy */
    },
    Forget: function () {
        this.drawn.Backspace();                                 /* decoy */
        this.drawn.ShiftCase();                                 /* decoy */
    },
    Key: function (code) {
        if (code >= 48 && code <= 57) {
            this.machine.Fire('digit');                         /* decoy */
            return true;
        }
        if (code === 13) {
            this.machine.Fire('ok');                            /* decoy */
            return true;
        }
        if (code === 415) {
            var keyboard = this.useSet ? Portal.store.device('keyboard') : this.drawn;
            keyboard.Show();
            this.typing.Learn();                                /* decoy */
            Portal.store.device('keyboard').PressKey('Enter');  /* call: KEYBOARD.PressKey */
            return true;
        }
        return false;
    }
});
