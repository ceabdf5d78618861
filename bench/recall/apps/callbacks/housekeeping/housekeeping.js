var files = document.getElementById('files');
var store = document.getElementById('store');
var power = document.getElementById('power');
var root = new Folder('/').Attach(new Folder('photos').Attach(new File('a.jpg', 900)))       /* decoy */
    .Attach(new File('readme.txt', 10));                        /* decoy */

// One function for each thing that is done; with what it is done is the caller's business.
function withEach(list, fn) {
    for (var i = 0; i < list.length; i++) {
        fn(list[i], i);
    }
}
function pipe() {
    var steps = arguments;
    return function (value) {
        for (var i = 0; i < steps.length; i++) {
            value = steps[i](value) || value;
        }
        return value;
    };
}
function shrink(thing) { thing.Shrink(100); }                   /* decoy */
function toggle(thing) { thing.Toggle(); }                      /* decoy */
function trim(device) { device.TrimBlocks(); }                  /* call: FILESTORE.TrimBlocks */
function journal(device) { device.WriteJournal('housekeeping'); }       /* call: STORAGE.WriteJournal */

withEach([files, store], trim);
withEach([store], journal);
withEach(root.children, shrink);
root.Walk(toggle);                                              /* decoy */

var folders = [];
root.Walk(function (one) {                                      /* decoy */
    if (one instanceof Folder) {
        folders.push(one);
        one.Shrink(1);                                          /* decoy */
    }
});

var repair = pipe(
    function (device) { device.CheckTables(); },                /* call: STORAGE.CheckTables */
    function (device) { device.RebuildIndex(); return device; } /* call: STORAGE.RebuildIndex */
);
var count = pipe(
    function (folder) { folder.Toggle(); },                     /* decoy */
    function (folder) { return { size: folder.Recount() }; }    /* decoy */
);

function report(rows) {
    document.getElementById('report').innerHTML = rows.map(function (row) {
        return '<tr><td>' + row.join('</td><td>') + '</td></tr>';
    }).join('');
}

// Called back by whoever is ready first: the disk, or our own worker.
function whenReady(thing, callback) {
    setTimeout(function () { callback(thing); }, 1);
}
function Worker_(name) { this.name = name; }
Worker_.prototype.Scrub = function () { this.scrubbed = true; };
Worker_.prototype.Yield = function () { return this.scrubbed; };

whenReady(files, function (disk) {
    disk.SpinUp();                                              /* call: FILESTORE.SpinUp */
    whenReady(new Worker_('scrubber'), function (worker) {
        worker.Scrub();                                         /* decoy */
        worker.Yield();                                         /* decoy */
        disk.Yield(10);                                         /* call: FILESTORE.Yield */
    });
});

// Errors come first, then the thing.
function acquire(name, done) {
    var things = { files: files, store: store, tree: root };
    if (!things.hasOwnProperty(name)) {
        return done(new Error(name), null);
    }
    done(null, things[name]);
}

// What goes to the power manager is a number or our own plan, told by its type.
function Plan(hours) { this.hours = hours; }
Plan.prototype.Schedule = function () { return this.hours.join(); };
function schedule(what) {
    if (typeof what === 'number') {
        power.SetSleepTimer(what);
    } else if (what instanceof Plan) {
        document.title = what.Schedule();                       /* decoy */
    } else {
        what.HoldAwake(60);                                     /* call: POWER.HoldAwake */
    }
}

document.onkeydown = function (e) {
    switch (e.keyCode) {
    case 13:
        acquire('tree', function (error, tree) {
            report([['size', error ? 0 : tree.Recount()]]);     /* decoy */
        });
        break;
    case 38:
        acquire('files', function (error, device) {
            if (!error) { report([['wear', device.GetWear()]]); }       /* call: FILESTORE.GetWear */
        });
        break;
    case 40:
        acquire('nothing', function (error, device) {
            report([[error ? error.message : device.name]]);
        });
        break;
    case 403: repair(store); break;
    case 404: report([['size', count(root).size]]); break;
    case 405: [60, new Plan([1, 2]), power].forEach(schedule); break;
    case 406:
        folders.forEach(toggle);
        store.Shrink(1);                                        /* call: STORAGE.Shrink */
        folders[0].Shrink(2);                                   /* decoy */
        break;
    case 27:
        power.Schedule('off', 5);                               /* call: POWER.Schedule */
        new Plan([3]).Schedule();                               /* decoy */
        break;
    }
};
