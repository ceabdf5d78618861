"use strict";
// Commands can be undone: each knows what it did.
class Command {
  constructor(receiver) { this.receiver = receiver; }
  execute() { throw new Error("abstract"); }
  undo() { }
  get name() { return this.constructor.name; }
}

class Protect extends Command {
  constructor(receiver, id) { super(receiver); this.id = id; }
  execute() { this.receiver.ProtectRecording(this.id, true); }      /* call: RECORDER.ProtectRecording */
  undo() { this.receiver.ProtectRecording(this.id, false); }        /* also: RECORDER.ProtectRecording */
}

class Rename extends Command {
  constructor(receiver, id, title) { super(receiver); Object.assign(this, { id, title }); }
  execute() {
    this.old = this.receiver.GetRecordingTitle(this.id);            /* call: RECORDER.GetRecordingTitle */
    this.receiver.SetRecordingTitle(this.id, this.title);           /* call: RECORDER.SetRecordingTitle */
  }
  undo() { this.receiver.SetRecordingTitle(this.id, this.old); }    /* also: RECORDER.SetRecordingTitle */
}

class Remove extends Command {
  constructor(receiver, id) { super(receiver); this.id = id; }
  execute() { this.receiver.DeleteRecording(this.id); }
  undo() { this.receiver.UndeleteRecording(this.id); }              /* call: RECORDER.UndeleteRecording */
}

// A command from names only.
class Simple extends Command {
  constructor(receiver, method, inverse, ...args) {
    super(receiver);
    Object.assign(this, { method, inverse, args });
  }
  execute() { return this.receiver[this.method](...this.args); }    /* also: RECORDER.CutCommercials, PLAYER.MarkChapter */
  undo() { if (this.inverse) this.receiver[this.inverse](...this.args); }     /* also: RECORDER.RestoreCommercials, PLAYER.UnmarkChapter */
}

class Macro extends Command {
  constructor(...commands) { super(null); this.commands = commands; }
  execute() { this.commands.forEach((c) => c.execute()); }
  undo() { this.commands.slice().reverse().forEach((c) => c.undo()); }
}

class History {
  constructor() { this.done = []; this.undone = []; }
  perform(command) {
    command.execute();
    this.done.push(command);
    this.undone.length = 0;
  }
  undo() {
    const command = this.done.pop();
    if (command) { command.undo(); this.undone.push(command); }
  }
  redo() {
    const command = this.undone.pop();
    if (command) { command.execute(); this.done.push(command); }
  }
  // For the list of what was done.
  MarkChapter(n) { this.chapter = n; }
}
