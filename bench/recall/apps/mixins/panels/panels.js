function Panel(id) { this.node = document.getElementById(id); }

function ClockPanel(id, clock) {
    Panel.call(this, id);
    this.backend = clock;
}
extend(ClockPanel.prototype, Panel.prototype, Fading, Ticking, Backed, {
    Render: function () {
        this.node.innerHTML = 'Drift ' + this.AskBackend('GetNtpDrift');            /* also: CLOCK.GetNtpDrift */
    },
    correct: function () {
        this.AskBackend('SyncNow', true);                                           /* also: CLOCK.SyncNow */
        this.FadeTo(100);                                                           /* decoy */
    }
});

function ScreenPanel(id, screen) {
    Panel.call(this, id);
    this.backend = screen;
}
extend(ScreenPanel.prototype, Fading, Backed, {
    Render: function () {
        this.node.innerHTML = 'Hours ' + this.AskBackend('GetPanelHours');          /* also: SCREEN.GetPanelHours */
    },
    dim: function (level) {
        this.FadeTo(level);                                                         /* decoy */
        this.backend.FadeBacklight(level);                                          /* call: SCREEN.FadeBacklight */
    }
});

// The notes have no part of the set: their backend is this list.
var notebook = {
    notes: ['milk', 'bread'],
    CountNotes: function () { return this.notes.length; },
    AddNote: function (text) { this.notes.push(text); },
    SyncNow: function () { localStorage.setItem('notes', this.notes.join('|')); },
    DropOldest: function () { this.notes.shift(); }
};
function NotesPanel(id) {
    Panel.call(this, id);
    this.backend = notebook;
    this.ask = Backed.AskBackend;
}
extend(NotesPanel.prototype, Fading, Ticking, {
    Render: function () {
        this.node.innerHTML = this.backend.CountNotes() + ' notes';                 /* decoy */
    },
    add: function (text) {
        this.ask('AddNote', text);                                                  /* decoy */
        if (this.backend.CountNotes() > 4) {                                        /* decoy */
            this.ask('DropOldest');                                                 /* decoy */
        }
    },
    save: function () {
        this.backend.SyncNow();                                                     /* decoy */
    }
});
