var tuner = document.getElementById('tuner'), scan = document.getElementById('scan');
var text = document.getElementById('text');

function fill(template, values) {
    return template.replace(/\{\{(\w+)\}\}/g, function (all, name) { return values[name]; });
}

// A page of the handbook: a text, and what is done when the viewer tries it.
function Page(topic, attempt) {
    this.topic = topic;
    this.attempt = attempt;
    this.read = 0;
}
Page.prototype.Turn = function () {
    this.read++;
    text.textContent = HELP[this.topic];
};
Page.prototype.Attempt = function () {
    this.attempt.call(this);
    this.Turn();                                                            /* decoy */
};

var pages = [
    new Page('tuning', function () {
        tuner.SetFrequency(474000);
        tuner.SetBandwidth(8);                                              /* call: TUNER.SetBandwidth */
    }),
    new Page('signal', function () {
        text.textContent = tuner.GetSignalLevel() + ' ' + tuner.GetCarrierOffset();     /* call: TUNER.GetCarrierOffset */
    }),
    new Page('scan', function () {
        scan.SetScanRange(474000, 858000);
        scan.SetPlan('terrestrial');                                        /* call: TUNERSCAN.SetPlan */
        scan.Start();
    }),
    new Page('expert', function () {
        Glossary.AddTerm('register', 'Where the chip keeps a value');       /* decoy */
        text.title = Glossary.Explain('register');                          /* decoy */
    })
];
var at = 0;

var row = document.getElementById('row').innerHTML, rows = document.getElementById('rows'), html = '';
for (var i = 0; i < 3; i++) {
    html += fill(row, { step: i, n: i, text: pages[i].topic });
}
rows.innerHTML = html;

// The field of the technician: what is typed there is shown, not run.
var console_ = document.getElementById('console');
console_.value = 'scan.LoadPlan("cable")';                                  /* decoy */
console_.onchange = function () {
    var match = /(\w+)\.(\w+)\(/.exec(this.value);
    text.textContent = match ? 'Not allowed: ' + match[2] : 'Nothing';
};

// Lines that the service prints: the name is only a label.
function label(name) { return '[' + name + ']'; }
var log = ['LockPll', 'RestartDemod'].map(label);                           /* decoy */
log.push(label('tuner.PokeRegister'));                                      /* decoy */

document.onkeydown = function (e) {
    switch (e.keyCode) {
    case 38: at = (at + pages.length - 1) % pages.length; pages[at].Turn(); break;      /* decoy */
    case 40: at = (at + 1) % pages.length; pages[at].Turn(); break;                     /* decoy */
    case 13: pages[at].Attempt(); break;                                    /* decoy */
    case 403: pages.forEach(function (page) { page.Attempt(); }); break;    /* decoy */
    case 404: eval('tuner.SetAgc(1)'); break;                               /* text: TUNER.SetAgc */
    case 405: setTimeout('scan.SortServices("name")', 5); break;            /* text: TUNERSCAN.SortServices */
    case 406: new Function('t', 't.LockPll()')(tuner); break;               /* text: TUNER.LockPll */
    case 27:
        text.textContent = 'eval("tuner.RestartDemod()")';                  /* decoy */
        tuner.Turn('off');                                                  /* call: TUNER.Turn */
        break;
    }
};
