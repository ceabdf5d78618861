var screen_ = document.getElementById('screen');
var panels = {
    clock: new ClockPanel('p1', document.getElementById('clock')),
    screen: new ScreenPanel('p2', screen_),
    notes: new NotesPanel('p3')
};

for (var name in panels) {
    panels[name].Render();                                      /* decoy */
}
panels.clock.StartTicking(50);                                  /* decoy */
screen_.StartTicking(50);                                       /* call: SCREEN.StartTicking */

// A plug-in is given a method of the page's own, for the remote part of the service to find.
extend(document.getElementById('clock'), {
    describe: function () {
        return this.GetOscillator() + ' ' + this.GetTime();     /* call: CLOCK.GetOscillator */
    }
});

// Defaults of the set, and of the page: the names are alike, the objects are not.
var page = extend({}, Fading, { node: document.body });
page.FadeTo(95);                                                /* decoy */

document.onkeydown = function (e) {
    switch (e.keyCode) {
    case 38: panels.screen.dim(90); break;
    case 40: panels.screen.dim(30); break;
    case 13: panels.notes.add('note ' + e.timeStamp); break;
    case 403: panels.clock.correct(); break;
    case 404: panels.notes.save(); break;
    case 405:
        document.title = document.getElementById('clock').describe();
        break;
    case 406:
        screen_.FadeOut();                                      /* call: SCREEN.FadeOut */
        page.FadeOut();                                         /* decoy */
        break;
    case 27:
        panels.clock.StopTicking();                             /* decoy */
        screen_.StopTicking();                                  /* call: SCREEN.StopTicking */
        break;
    }
};
