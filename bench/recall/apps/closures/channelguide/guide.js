var APP = APP || {};

/* Events as the page knows them. The plug-in gives numbers, the rest is our own. */
APP.events = (function () {
    var store = {}, count = 0;

    function Event(id, start, length) {
        this.id = id;
        this.start = start;
        this.length = length;
        this.marked = false;
    }
    Event.prototype.Mark = function () { this.marked = true; return this; };
    Event.prototype.Unmark = function () { this.marked = false; return this; };
    Event.prototype.GetEnd = function () { return this.start + this.length; };
    Event.prototype.Overlaps = function (other) {
        return this.start < other.GetEnd() && other.start < this.GetEnd();      /* decoy */
    };

    return {
        add: function (start, length) {
            store[++count] = new Event(count, start, length);
            return store[count];
        },
        get: function (id) { return store[id]; },
        each: function (fn) {
            for (var id in store) {
                if (store.hasOwnProperty(id)) { fn(store[id]); }
            }
        }
    };
}());

APP.cache = (function () {
    var entries = {};
    return {
        Fetch: function (key, make) {
            if (!(key in entries)) { entries[key] = make(); }
            return entries[key];
        },
        Invalidate: function (key) { delete entries[key]; },
        Flush: function () { entries = {}; }
    };
}());

APP.guide = (function (events, cache) {
    var epg = document.getElementById('epg');
    var service = 1, cursor = 1;

    function load() {
        epg.SetLanguage('eng');
        var got = epg.GetRawTable(service, 0x50);               /* call: EPG.GetRawTable */
        for (var i = 0; i < 6; i++) {
            events.add(i * 30 + got, i === 2 ? 60 : 30);
        }
        epg.ReleaseTable(service);                              /* call: EPG.ReleaseTable */
    }

    function title(event) {
        return cache.Fetch('title' + event.id, function () {    /* decoy */
            return epg.GetShortText(event.id);                  /* call: EPG.GetShortText */
        });
    }

    function draw() {
        var rows = [];
        events.each(function (event) {
            rows.push('<tr><td>' + title(event) + '</td><td>' + event.GetEnd() + '</td></tr>');     /* decoy */
        });
        document.getElementById('grid').innerHTML = rows.join('');
    }

    function refresh() {
        cache.Flush();                                          /* decoy */
        epg.Invalidate(service);                                /* call: EPG.Invalidate */
        load();
        draw();
    }

    return {
        init: function () { load(); draw(); },
        refresh: refresh,
        move: function (by) {
            cursor = Math.max(1, cursor + by);
            var event = events.get(cursor);
            if (event) { cache.Invalidate('title' + cursor); }  /* decoy */
            return event;
        },
        selected: function () { return events.get(cursor); }
    };
}(APP.events, APP.cache));

APP.timers = (function (events) {
    var recorder = document.getElementById('rec');

    function clash(event) {
        var found = false;
        events.each(function (other) {
            found = found || (other !== event && other.marked && event.Overlaps(other));    /* decoy */
        });
        return found;
    }

    return {
        book: function (event) {
            if (clash(event)) {
                recorder.ResolveConflict(event.id);             /* call: RECORDER.ResolveConflict */
                event.Unmark();                                 /* decoy */
            } else {
                recorder.ScheduleRecording(event.start, event.GetEnd());    /* decoy */
                recorder.SetMargins(2, 5);                      /* call: RECORDER.SetMargins */
                event.Mark();                                   /* decoy */
            }
        },
        series: function (event) {
            recorder.BookSeries(event.id);                      /* call: RECORDER.BookSeries */
            recorder.Mark(event.id);                            /* call: RECORDER.Mark */
            events.get(1).Mark().Unmark();                      /* decoy */
        }
    };
}(APP.events));

APP.guide.init();
document.onkeydown = function (e) {
    switch (e.keyCode) {
    case 38: APP.guide.move(-1); break;
    case 40: APP.guide.move(1); break;
    case 13: APP.timers.book(APP.guide.selected() || APP.events.get(1)); break;
    case 403: APP.timers.book(APP.events.get(3)); APP.timers.book(APP.events.get(4)); break;
    case 404: APP.timers.series(APP.events.get(2)); break;
    case 405: APP.guide.refresh(); break;
    }
};
/* the clash must be seen once in a while */
APP.events.add(60, 60).Mark();                                  /* decoy */
APP.timers.book(APP.events.get(3));
