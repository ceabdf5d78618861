var Notices = (function () {
    function id(name) { return document.getElementById(name); }

    /* Facade: shows a notice on the board of the page, or with the set. */
    function Board(node) { this.node = node; this.notes = []; }
    Board.prototype.Pin = function (note) { this.notes.push(note); this.Arrange(); };        /* decoy */
    Board.prototype.Unpin = function (n) { this.notes.splice(n, 1); this.Arrange(); };       /* decoy */
    Board.prototype.Arrange = function () { this.node.textContent = this.notes.join(' / '); };

    function Ticker(node) { this.node = node; this.speed = 1; }
    Ticker.prototype.Pin = function (note) { this.node.textContent = note; };
    Ticker.prototype.SetSpeed = function (n) { this.speed = n; };

    /* Strategy: all options have a target and the names of what to do there. */
    var strategies = {
        board: { target: new Board(id('board')), put: 'Pin', settle: 'Arrange' },            /* decoy */
        ticker: { target: new Ticker(id('ticker')), put: 'Pin', settle: 'SetSpeed' },        /* decoy */
        set: { target: id('noteObj'), put: 'ShowMessage', settle: 'SetBadge' }               /* also: NOTIFICATION.SetBadge */
    };

    function publish(kind, text) {
        var strategy = strategies[kind];
        strategy.target[strategy.put](text);
        strategy.target[strategy.settle](1);                    /* call: NOTIFICATION.SetBadge */
    }

    /* Options of a notice. The callbacks have one name for all kinds. */
    var urgent = {
        source: id('noteObj'),
        apply: function (source) { source.SetUrgency(3); }      /* call: NOTIFICATION.SetUrgency */
    };
    var calm = {
        source: strategies.ticker.target,
        apply: function (source) { source.SetSpeed(0.5); }      /* decoy */
    };
    function issue(options) {
        options = options || calm;
        if (options.apply) {
            options.apply(options.source);
        }
    }

    /* State: who is signed in decides what a key does. */
    var guest = {
        name: 'guest',
        Enter: function () { publish('board', 'hello'); },
        Leave: function () { strategies.board.target.Unpin(0); },            /* decoy */
        Remind: function () { return 'sign in first'; }
    };
    var member = {
        name: 'member',
        Enter: function () { id('accObj').TouchProfile(); },    /* call: ACCOUNT.TouchProfile */
        Leave: function () { id('accObj').SignOut(); },
        Remind: function (when) {
            id('calObj').SetReminder(when);
            return id('calObj').Remind(when);                   /* call: CALENDAR.Remind */
        }
    };
    var state = guest;
    function become(next) {
        state.Leave();                                          /* decoy */
        state = next;
        state.Enter();                                          /* decoy */
    }

    /* Visitor over the entries of a day. */
    function Entry(text) { this.text = text; }
    Entry.prototype.Accept = function (visitor) { visitor.VisitEntry(this); };               /* decoy */
    function Group(entries) { this.entries = entries; }
    Group.prototype.Accept = function (visitor) {
        this.entries.forEach(function (entry) { entry.Accept(visitor); });   /* decoy */
        visitor.VisitGroup(this);                               /* decoy */
    };
    var printer = {
        VisitEntry: function (entry) { publish('ticker', entry.text); },
        VisitGroup: function (group) { id('calObj').ExportIcs(group.entries.length); }       /* call: CALENDAR.ExportIcs */
    };

    /* Chain of responsibility. */
    function Handler(next) { this.next = next; }
    Handler.prototype.Handle = function (code) { return this.next ? this.next.Handle(code) : false; };      /* decoy */
    var last = new Handler(null), first = new Handler(last);
    last.Handle = function (code) {
        if (code === 19) {
            id('accObj').MergeGuests();                         /* call: ACCOUNT.MergeGuests */
            return true;
        }
        return false;
    };

    return {
        publish: publish, issue: issue, urgent: urgent,
        become: become, guest: guest, member: member,
        remind: function () { return state.Remind(60); },       /* decoy */
        day: new Group([new Entry('tea'), new Entry('news')]),
        printer: printer, handle: function (code) { return first.Handle(code); }             /* decoy */
    };
}());

document.onkeydown = function (e) {
    switch (e.keyCode) {
    case 13: Notices.publish('board', 'one'); Notices.publish('ticker', 'two'); break;
    case 38: Notices.publish('set', 'three'); break;
    case 40: Notices.issue(); Notices.issue(Notices.urgent); break;
    case 403: Notices.become(Notices.member); document.title = Notices.remind(); break;
    case 404: Notices.become(Notices.guest); document.title = Notices.remind(); break;
    case 405: Notices.day.Accept(Notices.printer); break;       /* decoy */
    case 406:
        document.getElementById('noteObj').Pin(1);              /* call: NOTIFICATION.Pin */
        document.getElementById('calObj').Arrange('by hour');   /* call: CALENDAR.Arrange */
        break;
    default: Notices.handle(e.keyCode);
    }
};
