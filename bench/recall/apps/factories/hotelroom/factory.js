'use strict';

/** Makes what the room has. Plug-ins are made as elements, the rest are objects of the page. */
const factory = {
  makers: {},
  define(kind, maker) { this.makers[kind] = maker; },
  create(kind, ...args) {
    if (!Object.hasOwn(this.makers, kind)) throw new RangeError(kind);
    return this.makers[kind](...args);
  },
};

function plugin(name) {
  const element = document.createElement('object');
  element.setAttribute('classid', `clsid:MORVANE-NAVERTIX-${name}`);
  element.width = element.height = 0;
  return document.body.appendChild(element);
}

// Looks like one, and is a box of the page.
function panel(name) {
  const element = document.createElement('div');
  element.className = name;
  element.SetCaption = (text) => { element.textContent = text; };
  element.Slide = (from) => { element.dataset.from = from; };
  element.Pulse = () => element.classList.toggle('pulse');
  return document.getElementById('services').appendChild(element);
}

factory.define('power', () => plugin('POWER'));
factory.define('calendar', () => plugin('CALENDAR'));
factory.define('serial', () => plugin('SERIALPORT'));
factory.define('panel', panel);
