/* Commands can be undone. A command knows the device that it works on. */
var commands = {};

function defineCommand(name, definition) {
    function Command(device, argument) {
        this.device = device;
        this.argument = argument;
        this.executed = 0;
    }
    Command.prototype.name = name;
    Command.prototype.execute = function () {
        this.executed++;
        return definition.execute.call(this, this.device, this.argument);
    };
    Command.prototype.undo = definition.undo ? function () {
        return definition.undo.call(this, this.device, this.argument);
    } : null;
    commands[name] = Command;
}

defineCommand("cut", {
    execute: function (player, ms) { player.SetCutMark(ms); },              /* call: PLAYER.SetCutMark */
    undo: function (player, ms) { player.RemoveCutMark(ms); }               /* call: PLAYER.RemoveCutMark */
});

defineCommand("volume", {
    execute: function (player, percent) {
        this.before = player.GetClipGain();                                 /* call: PLAYER.GetClipGain */
        player.SetClipGain(percent);                                        /* call: PLAYER.SetClipGain */
    },
    undo: function (player) { player.SetClipGain(this.before); }            /* also: PLAYER.SetClipGain */
});

defineCommand("title", {
    execute: function (recorder, text) { recorder.SetRecordingTitle(1, text); },    /* call: RECORDER.SetRecordingTitle */
    undo: function (recorder) { recorder["SetRecordingTitle"](1, ""); }     /* also: RECORDER.SetRecordingTitle */
});

defineCommand("export", {
    execute: function (files, path) {
        files.OpenFile(path);
        files.AppendClip(path, this.argument);                              /* call: FILESTORE.AppendClip */
        files.CloseFile(path);
    }
});

// Several commands as one.
function Macro(list) {
    this.list = list;
}
Macro.prototype.name = "macro";
Macro.prototype.execute = function () {
    this.list.forEach(function (c) { c.execute(); });
};
Macro.prototype.undo = function () {
    this.list.slice().reverse().forEach(function (c) {
        if (c.undo) {
            c.undo();
        }
    });
};
