'use strict';

/** Lights and blinds hang on the serial port; the bill and the wake-up calls are ours. */
function createLights(port) {
  return {
    Dim(level) { port.WriteFrame([0x10, level]); },                         /* call: SERIALPORT.WriteFrame */
    Scene(name) { port.WriteBytes(name); },
    Blink(times) { port.PulseLine('RTS', times); },                         /* call: SERIALPORT.PulseLine */
  };
}

function createBill() {
  let sum = 0;
  const lines = [];
  return Object.freeze({
    Post(what, price) { lines.push([what, price]); sum += price; },
    Reverse() { const [, price] = lines.pop() || ['', 0]; sum -= price; },
    Total: () => sum,
    Blink() { document.title = sum; },
  });
}

function createWakeUps(calendar) {
  const own = [];
  return {
    Book(hour) {
      calendar.AddEntry(hour);
      calendar.SnoozeAll(5);                                                /* call: CALENDAR.SnoozeAll */
      own.push({ hour, Ring() { this.rung = true; } });
    },
    RingAll() { own.forEach((one) => one.Ring()); },                        /* decoy */
    Ring() { calendar.SoundChime(1); },                                        /* call: CALENDAR.SoundChime */
  };
}

factory.define('lights', () => createLights(factory.create('serial')));
factory.define('bill', createBill);
factory.define('wakeUps', () => createWakeUps(factory.create('calendar')));
