'use strict';

const config = [
  { name: 'lights', kind: 'lights' },
  { name: 'bill', kind: 'bill' },
  { name: 'alarm', kind: 'wakeUps' },
  { name: 'head', kind: 'panel', args: ['head'] },
  { name: 'foot', kind: 'panel', args: ['foot'] },
  { name: 'power', kind: 'power' },
];
const room = Object.fromEntries(config.map(({ name, kind, args = [] }) => [name, factory.create(kind, ...args)]));

room.head.SetCaption('Room 12');                                            /* decoy */
room.foot.SetCaption('Good evening');                                       /* decoy */
room.power.SetWakeSource('rtc');                                            /* call: POWER.SetWakeSource */

// The same function is given to all panels, and not to what is no panel.
const panels = config.filter(({ kind }) => kind === 'panel').map(({ name }) => room[name]);
const slideIn = (panel) => panel.Slide('left');                             /* decoy */
panels.forEach(slideIn);

function sleep() {
  room.lights.Dim(0);                                                       /* decoy */
  room.lights.Scene('night');                                               /* decoy */
  for (const panel of panels) panel.Pulse();                                /* decoy */
  room.power.EnterDeepSleep(8 * 60);                                        /* call: POWER.EnterDeepSleep */
}

function minibar(what) {
  const { bill, power } = room;
  bill.Post(what, 4);                                                       /* decoy */
  if (bill.Total() > 20) {                                                  /* decoy */
    bill.Reverse();                                                         /* decoy */
  }
  power.Post('minibar');                                                    /* call: POWER.Post */
}

/** A guest's tablet asks over this; only the kinds of the room that are its own business. */
const tablet = {
  allowed: { lights: ['Dim', 'Scene', 'Blink'], bill: ['Total', 'Blink'] },
  handle({ to, verb, value }) {
    if (!this.allowed[to]?.includes(verb)) return undefined;
    return room[to][verb](value);                                           /* decoy */
  },
};

addEventListener('keydown', ({ keyCode }) => {
  switch (keyCode) {
    case 13: minibar('water'); break;
    case 38: tablet.handle({ to: 'lights', verb: 'Dim', value: 80 }); break;                /* decoy */
    case 40: tablet.handle({ to: 'bill', verb: 'Blink' }); break;                           /* decoy */
    case 33: tablet.handle({ to: 'lights', verb: 'Blink', value: 2 }); break;               /* decoy */
    case 34: tablet.handle({ to: 'power', verb: 'EnterDeepSleep', value: 2 }); break;       /* decoy */
    case 403: room.alarm.Book(7); break;                                    /* decoy */
    case 404: room.alarm.RingAll(); room.alarm.Ring(); break;               /* decoy */
    case 405: room.power.Blink(3); break;                                   /* call: POWER.Blink */
    case 406: room.bill.Blink(); break;                                     /* decoy */
    case 27: sleep(); break;
  }
});

const spare = factory.create('serial');
spare.SetFlowControl('xon');                                                /* call: SERIALPORT.SetFlowControl */
factory.create('panel', 'spare').Pulse();                                   /* decoy */
