'use strict';

/** Commands can be done, undone and told to the log. Some are for the set, most for the wizard's own state. */
class Command {
  constructor(receiver) { this.receiver = receiver; }
  Do() {}
  Undo() {}
}

class SortCommand extends Command {
  Do() { this.before = [...this.receiver.rows]; this.receiver.SortRows(); }     /* decoy */
  Undo() { this.receiver.RestoreRows(this.before); }                            /* decoy */
}

class SkipCommand extends Command {
  Do() { this.receiver.SkipRegion(2); }                                         /* call: TUNERSCAN.SkipRegion */
  Undo() { this.receiver.ReturnToRegion(1); }                                   /* call: TUNERSCAN.ReturnToRegion */
}

class HideCommand extends Command {
  constructor(receiver, row) { super(receiver); this.row = row; }
  Do() { this.receiver.HideRow(this.row); }                                     /* decoy */
  Undo() { this.receiver.RestoreRows([this.row]); }                             /* decoy */
}

class MoveCommand extends Command {
  Do() { this.receiver.MoveChannel(1, 9); }                                     /* call: CHANNEL.MoveChannel */
  Undo() { this.receiver.MoveChannel(9, 1); }                                   /* also: CHANNEL.MoveChannel */
}

class History {
  #done = [];
  Perform(command) { command.Do(); this.#done.push(command); return this; }     /* decoy */
  Revert() { this.#done.pop()?.Undo(); }                                        /* decoy */
  *[Symbol.iterator]() { yield* this.#done; }
}

class ServiceTable {
  rows = ['one', 'two', 'three'];
  SortRows() { this.rows.sort(); }
  RestoreRows(rows) { this.rows = [...new Set([...this.rows, ...rows])]; }
  HideRow(row) { this.rows = this.rows.filter((one) => one !== row); }
  FlushRows() { this.rows.length = 0; }
}
