// Drives a page: events on its elements, the keys of a remote control, window events, kept callbacks. Stands behind
// recorder.js in the same function, and works with what was captured before any code of the page ran. A step takes some
// 40 ms; one that hangs can be ended, and the next goes on behind what hung.

const dispatch = uncurried(EventTarget.prototype.dispatchEvent);
const activeElement = getterOf(Document.prototype, 'activeElement');
const bodyOf = getterOf(Document.prototype, 'body');
const localName = getterOf(Element.prototype, 'localName');
const classText = getterOf(Element.prototype, 'className');
const NativeEvent = Event;
const NativeMouse = MouseEvent;
const NativeKeyboard = KeyboardEvent;
const NativeMessage = MessageEvent;
const NativeCustom = CustomEvent;
const NativeStorage = StorageEvent;
const NativePop = PopStateEvent;
const NativeClipboard = ClipboardEvent;
const NativeTransfer = DataTransfer;
const NativePointer = PointerEvent;
const NativeWheel = WheelEvent;
const NativeDrag = DragEvent;
const NativeTouch = page.Touch;
const NativeTouchEvent = page.TouchEvent;
const boxOf = uncurried(Element.prototype.getBoundingClientRect);
const [leftOf, topOf, rightOf, bottomOf] = ['left', 'top', 'right', 'bottom'].map(
  (name) => getterOf(DOMRectReadOnly.prototype, name));
const scrollTo = uncurried(page.scrollTo);
const queryRoot = uncurried(DocumentFragment.prototype.querySelectorAll);
const charCodeAt = uncurried(String.prototype.charCodeAt);
const upper = uncurried(String.prototype.toUpperCase);
const setData = uncurried(DataTransfer.prototype.setData);
const getInput = getterOf(HTMLInputElement.prototype, 'value');
const setInput = uncurried(getOwnPropertyDescriptor(HTMLInputElement.prototype, 'value').set);
const setArea = uncurried(getOwnPropertyDescriptor(HTMLTextAreaElement.prototype, 'value').set);
const inputType = getterOf(HTMLInputElement.prototype, 'type');
const optionCount = getterOf(HTMLSelectElement.prototype, 'length');
const setSelected = uncurried(getOwnPropertyDescriptor(HTMLSelectElement.prototype, 'selectedIndex').set);

const maxEvents = 15000;   // of one round
const maxAlike = 150;      // elements of one name and class, and with the same handlers in their tags
const stepTime = 40;
const maxHangs = 5;        // of one phase: the time is for the others, too
const maxUncalledHangs = 15;

// The types of events that anybody listens to.
const listened = {__proto__: null};
const types = [];
const nativeListen = EventTarget.prototype.addEventListener;
define(EventTarget.prototype, 'addEventListener', function addEventListener(...list) {
  const type = list[0];
  if (typeof type === 'string' && !(type in listened) && types.length < 200) {
    listened[type] = 1;
    push(types, type);
  }
  return apply(nativeListen, this === undefined || this === null ? page : this, list);
});

const asTable = (text) => {
  const table = {__proto__: null};
  for (const word of text.split(' ')) table[word] = 1;
  return table;
};
const mouseTypes = ('mouseover mouseenter mousemove pointerover pointerenter pointerdown mousedown pointermove ' +
                    'mousemove pointerup mouseup click dblclick contextmenu mouseout mouseleave pointerout ' +
                    'pointerleave').split(' ');
const plainTypes = ('focus focusin select input change submit reset search invalid toggle touchstart touchmove touchend ' +
  'dragstart drag dragenter dragover dragleave drop dragend wheel mousewheel scroll error play playing pause ended timeupdate ' +
  'loadedmetadata canplay stalled waiting volumechange loadeddata seeking seeked canplaythrough durationchange ' +
  'ratechange emptied suspend animationend webkitAnimationEnd transitionend ' +
  'webkitTransitionEnd copy cut paste blur focusout').split(' ');
const keyTypes = ['keydown', 'keypress', 'keyup'];
const windowTypes = ('resize scroll focus hashchange popstate message storage online offline visibilitychange pageshow ' +
  'orientationchange error unhandledrejection deviceready blur beforeunload pagehide unload').split(' ');
const own = asTable(mouseTypes.concat(plainTypes, keyTypes, windowTypes, ['load', 'DOMContentLoaded',
  'readystatechange', 'abort', 'progress', 'loadend', 'loadstart']).join(' '));
const onlyMedia = asTable('loadeddata seeking seeked canplaythrough durationchange ratechange emptied suspend');
const media = asTable('video audio');
const drags = asTable('dragstart drag dragenter dragover dragleave drop dragend');
const wheels = asTable('wheel mousewheel');
const touches = asTable('touchstart touchmove touchend');
const presses = asTable('keydown mousedown pointerdown touchstart');
const notBubbling = asTable('focus blur mouseenter mouseleave pointerenter pointerleave error scroll play playing pause ended ' +
  'timeupdate loadedmetadata canplay stalled waiting volumechange toggle invalid loadeddata seeking seeked ' +
  'canplaythrough durationchange ratechange emptied suspend');
const clickable = asTable('a button input label option area summary');
const failing = asTable('img script object embed video audio iframe link');

const hasHandler = (object, type) => {
  try {
    return typeof object['on' + type] === 'function';
  } catch (error) {
    return false;
  }
};

const attributeNames = uncurried(Element.prototype.getAttributeNames);

// What an element has in common with others that a page makes by the thousand; to ask for its handlers would compile
// them. Other attributes count where handlers could read them.
const kindOf = (element, name) => {
  let key = name + ' ' + toText(classText(element));
  const names = attributeNames(element);
  let hasOwn = false;
  for (let i = 0; i < names.length && !hasOwn; ++i) hasOwn = startsWith(names[i], 'on');
  for (let i = 0; hasOwn && i < names.length; ++i)
    key += '\n' + names[i] + '=' + slice(toText(getAttribute(element, names[i])), 0, 300);
  return {__proto__: null, key, hasOwn};
};

// Who holds a key or a button for long sees what its timer does: the next event waits for that.
const pressTime = 45;
const maxPresses = 6;  // of keys, and of all else
const pressed = {__proto__: null, keys: 0, others: 0};
let pressedUntil = 0;

let events = 0;
const fireAt = (target, event, type) => {
  ++events;
  const timers = longTimers;
  try {
    dispatch(target, event);
  } catch (error) { /* a target that is none */ }
  const kind = type === 'keydown' ? 'keys' : 'others';
  if (longTimers === timers || !(type in presses) || pressed[kind] >= maxPresses) return;
  ++pressed[kind];
  pressedUntil = realNow(clock) + pressTime;
};

const pasted = asTable('copy cut paste');
let x = 10;  // where the pointer is
let y = 10;
let sign = 1;  // the direction of what moves, in this round
let dragged = null;

const touchEvent = (type, target) => {
  const touch = new NativeTouch({__proto__: null, identifier: 1, target, clientX: x, clientY: y, pageX: x, pageY: y,
                                 screenX: x, screenY: y});
  const down = type === 'touchend' ? [] : [touch];
  return new NativeTouchEvent(type, {__proto__: null, bubbles: true, cancelable: true, touches: down,
                                     targetTouches: down, changedTouches: [touch]});
};

const plainEvent = (type, target) => {
  const usual = {__proto__: null, bubbles: !(type in notBubbling), cancelable: true, clientX: x, clientY: y};
  if (type in touches && NativeTouch && NativeTouchEvent) {
    try {
      return touchEvent(type, target);
    } catch (error) { /* the page has changed what lists are read with */ }
  }
  if (type in wheels) return new NativeWheel(type, {__proto__: usual, deltaY: 100 * sign});
  if (type in drags) {
    if (dragged === null) {
      dragged = new NativeTransfer();
      setData(dragged, 'text', settings.mark);
    }
    return new NativeDrag(type, {__proto__: usual, dataTransfer: dragged});
  }
  if (!(type in pasted)) return new NativeEvent(type, usual);
  const clipboardData = new NativeTransfer();
  setData(clipboardData, 'text', settings.mark);
  return new NativeClipboard(type, {__proto__: null, bubbles: true, cancelable: true, clipboardData});
};
const mouseEvent = (type) => {
  const how = {
    __proto__: null, bubbles: !(type in notBubbling), cancelable: true, view: page, button: 0, clientX: x, clientY: y,
    screenX: x, screenY: y, detail: 1, pointerId: 1, isPrimary: true, pointerType: sign > 0 ? 'mouse' : 'touch'};
  return startsWith(type, 'pointer') ? new NativePointer(type, how) : new NativeMouse(type, how);
};

// The middle of an element; in every second round, its right end.
const pointAt = (element) => {
  const box = boxOf(element);
  x = floor(sign > 0 ? (leftOf(box) + rightOf(box)) / 2 : rightOf(box) - 1);
  y = floor((topOf(box) + bottomOf(box)) / 2);
};
const moved = 60;

const keyNames = {
  __proto__: null, 8: 'Backspace', 9: 'Tab', 13: 'Enter', 27: 'Escape', 32: ' ', 33: 'PageUp', 34: 'PageDown', 35: 'End',
  36: 'Home', 37: 'ArrowLeft', 38: 'ArrowUp', 39: 'ArrowRight', 40: 'ArrowDown', 46: 'Delete', 112: 'F1', 113: 'F2',
  114: 'F3', 115: 'F4', 403: 'ColorF0Red', 404: 'ColorF1Green', 405: 'ColorF2Yellow', 406: 'ColorF3Blue',
  412: 'MediaRewind', 413: 'MediaStop', 415: 'MediaPlay', 417: 'MediaFastForward', 19: 'Pause', 427: 'ChannelUp',
  428: 'ChannelDown', 447: 'AudioVolumeUp', 448: 'AudioVolumeDown', 449: 'AudioVolumeMute', 457: 'Info', 458: 'Guide',
  461: 'GoBack', 10009: 'XF86Back', 176: 'MediaTrackNext', 177: 'MediaTrackPrevious', 178: 'MediaStop',
  179: 'MediaPlayPause',
};
const fromCharCode = String.fromCharCode;
const nameOfKey = (code) => {
  if (code in keyNames) return keyNames[code];
  if (code >= 48 && code <= 57) return fromCharCode(code);
  if (code >= 65 && code <= 90) return fromCharCode(code + 32);
  return 'Unidentified';
};
const placeOfKey = (name, code) => {
  if (code >= 65 && code <= 90) return 'Key' + upper(name);
  if (code >= 48 && code <= 57) return 'Digit' + name;
  return name === ' ' ? 'Space' : name;
};
const keyEvent = (type, key, modifier) => {
  const isCode = typeof key === 'number';
  const name = isCode ? nameOfKey(key) : key;
  const isCharacter = name.length === 1;
  let code = isCode ? key : isCharacter ? charCodeAt(upper(name), 0) : 0;
  const place = placeOfKey(name, code);
  if (type === 'keypress' && isCharacter) code = charCodeAt(name, 0);
  const how = {
    __proto__: null, bubbles: true, cancelable: true, view: page, key: name, code: place, keyCode: code, which: code,
    charCode: type === 'keypress' ? code : 0};
  if (modifier !== undefined) how[modifier] = true;
  return new NativeKeyboard(type, how);
};

// ---- one round, as a position in it ------------------------------------------------------------------------------------

let round = 0;
let phase = 0;     // elements, keys, window, callbacks, done
let position = 0;  // in that phase
let part = 0;      // of that position
let cut = 0;       // what there was more of than is tried: 1 elements, 2 callbacks
let hangs = 0;     // steps of that phase that were ended
let isInStep = false;
let isPausing = false;  // there is nothing to do now, but later
let elements = null;
let others = [];   // that stand in shadows, or nowhere
const maxOthers = 5000;
let alike = {__proto__: null};

const isWanted = (element, name, type) => {
  if (hasHandler(element, type)) return true;
  if (type === 'error' && !(name in failing)) return false;
  if (type in onlyMedia && !(name in media)) return false;
  // What was pressed here may be followed by the whole page.
  if (pointed === element && (hasHandler(pageDocument, type) || hasHandler(page, type))) return true;
  return type in listened;
};

const fillIn = (element, name) => {
  if (name === 'select') {
    const count = optionCount(element);
    if (count > 1) setSelected(element, (round + 1) % count);
  } else if (isMade && name === 'textarea') {
    setArea(element, settings.mark);
  } else if (isMade && name === 'input') {
    const type = inputType(element);
    if ((type === 'number' || type === 'range') && round === 1) setInput(element, '9');
    if ((type === 'text' || type === 'search' || type === 'url' || type === 'hidden' || type === 'password') &&
        (getInput(element) === '' || round === 1))
      setInput(element, settings.mark);
  }
};

// What somebody may have typed: words that scripts know, and others behind them.
const typeWords = (element, name) => {
  const set = name === 'input' ? setInput : setArea;
  for (let i = 0; i < wordCount; ++i) {
    set(element, wordsOfText(i));
    for (const type of ['input', 'change']) fireAt(element, plainEvent(type, element), type);
    for (const type of keyTypes) fireAt(element, keyEvent(type, 13), '');
  }
  set(element, settings.mark);
};
const typed = asTable('text search url hidden password');

let pointed = null;
const elementTypes = mouseTypes.concat(plainTypes);
// The next event for an element; false behind the last.
const nextForElement = (element) => {
  const name = localName(element);
  if (part === 0) {
    if (name === 'select' || name === 'textarea' || name === 'input') fillIn(element, name);
    const {key, hasOwn} = kindOf(element, name);
    const isMany = (alike[key] || 0) >= maxAlike;
    if (isMany && hasOwn) return false;
    let handlers = hasOwn ? 1 : 0;
    for (let i = 0; handlers === 0 && i < elementTypes.length; ++i) handlers += hasHandler(element, elementTypes[i]) ? 1 : 0;
    if (hasOwn || (handlers === 0 && !(name === 'a' || name === 'button'))) {
      if (isMany) return false;
      alike[key] = (alike[key] || 0) + 1;
    }
  }
  while (part < elementTypes.length) {
    const type = elementTypes[part++];
    const isMouse = part <= mouseTypes.length;
    if (type === 'pointermove' || type === 'touchmove') x += moved * sign;
    if (type === 'click') x -= moved * sign;
    if ((type === 'click' && name in clickable) || isWanted(element, name, type)) {
      if (pointed !== element) {
        pointed = element;
        pointAt(element);
      }
      if (isPlausible && type === 'change' && (name === 'textarea' || (name === 'input' && inputType(element) in typed)))
        typeWords(element, name);
      fireAt(element, isMouse ? mouseEvent(type) : plainEvent(type, element), type);
      return true;
    }
  }
  while (part < elementTypes.length + keyTypes.length) {
    const type = keyTypes[part++ - elementTypes.length];
    if (hasHandler(element, type)) {
      const codes = settings.keys;
      for (let i = 0; i < codes.length && i < 40; ++i) fireAt(element, keyEvent(type, codes[i]));
      return true;
    }
    if (type in listened && (name in clickable || round === 0)) {
      fireAt(element, keyEvent(type, 13));
      return true;
    }
  }
  return false;
};

const findElements = () => {
  elements = queryAll(pageDocument, '*');
  others = [];
  for (let i = 0; i < roots.length; ++i) {
    const inRoot = queryRoot(roots[i], '*');
    for (let j = 0; j < listLength(inRoot) && others.length < maxOthers; ++j) push(others, listItem(inRoot, j));
  }
  for (let i = 0; i < loose.length; ++i) push(others, loose[i]);
};

const nextElement = () => {
  if (elements === null || position >= listLength(elements) + others.length) return false;
  if (events > maxEvents) {
    cut |= 1;
    return false;
  }
  const element = position < listLength(elements) ? listItem(elements, position) : others[position - listLength(elements)];
  let isMore = false;
  try {
    isMore = nextForElement(element);
  } catch (error) { /* the next one */ }
  if (!isMore) {
    ++position;
    part = 0;
  }
  return true;
};

const wantsKeys = () => {
  for (let i = 0; i < 3; ++i) {
    const type = keyTypes[i];
    if (type in listened || hasHandler(page, type) || hasHandler(pageDocument, type) ||
        (bodyOf(pageDocument) !== null && hasHandler(bodyOf(pageDocument), type)))
      return true;
  }
  return false;
};

const keyTarget = () => activeElement(pageDocument) || bodyOf(pageDocument) || pageDocument;

const nextKey = () => {
  const {keys, modifiers} = settings;
  const at = position++;
  if (!wantsKeys()) return false;
  const pass = floor(at / (3 * keys.length));  // one with each modifier, then the sequences
  if (pass <= (round === 1 ? modifiers.length : 0)) {
    const type = keyTypes[at % 3];
    fireAt(keyTarget(), keyEvent(type, keys[floor(at / 3) % keys.length], pass === 0 ? undefined : modifiers[pass - 1]),
           pass === 0 && round > 0 ? type : '');
    return true;
  }
  const sequence = settings.sequences[at - 3 * keys.length * pass];
  if (round !== 1 || sequence === undefined) return false;
  for (let i = 0; i < sequence.length; ++i) {
    for (let j = 0; j < 3; ++j) fireAt(keyTarget(), keyEvent(keyTypes[j], sequence[i]), '');
  }
  return true;
};

const windowEvent = (type) => {
  switch (type) {
    case 'message':
      return new NativeMessage(type, {__proto__: null, data: round % 2 === 0 ? unknownValue(0, true) : settings.mark,
                                      origin: 'null', source: page});
    case 'storage':
      return new NativeStorage(type, {__proto__: null, key: settings.mark, newValue: settings.mark, url: 'http://application.invalid/'});
    case 'popstate':
      return new NativePop(type, {__proto__: null, state: round % 2 === 0 ? null : unknownValue(0, true)});
    default:
      return type in own ? new NativeEvent(type, {__proto__: null, cancelable: true, bubbles: type in isAtDocument})
                         : new NativeCustom(type, {__proto__: null, bubbles: true, cancelable: true,
                                                   detail: unknownValue(0, true)});
  }
};

// What another page says: whatever is asked for is that word.
const messageOf = (word) => new NativeMessage('message', {
  __proto__: null, origin: 'null', source: page,
  data: new NativeProxy({}, {__proto__: null, get: (_, key) => (typeof key === 'symbol' ? undefined : word)})});

const give = (word, run) => {
  given = toText(word);
  try {
    run(word);
  } finally {
    given = undefined;
  }
};

// Messages as a page may expect them: with the origins that its scripts name, with properties that they compare.
const plausibleMessages = () => {
  const own = (isText) => {
    const properties = {__proto__: null};
    return new NativeProxy({}, {__proto__: null, get: (_, key) => {
      if (typeof key === 'symbol') return undefined;
      if (key in properties) return properties[key];
      const value = plausible(key);
      properties[key] = value !== undefined ? value : isText ? settings.mark : unknownValue(0, true);
      return properties[key];
    }});
  };
  const {origins} = settings;
  const fire = (data, at) => fireAt(page, new NativeMessage('message', {
    __proto__: null, data, source: page, origin: origins.length === 0 ? 'null' : origins[at % origins.length]}));
  for (let i = 0; i < 24; ++i) fire(own(i % 2 === 0), floor(i / 2));
  for (let i = 0; i < wordCount; ++i) fire(wordsOfText(i), i);
  fire('M' + settings.mark, 0);
};

// Addresses as the page may have been left with.
const replaceState = uncurried(History.prototype.replaceState);
const pageHistory = history;
const plausibleHashes = () => {
  for (let i = 0; i < wordCount + 1; ++i) {
    const hash = i === 0 ? '#/' + settings.mark + '/' + settings.mark : '#' + (i % 2 === 0 ? '/' : '') + wordsOfText(i - 1);
    replaceState(pageHistory, null, '', hash);
    fireAt(page, windowEvent('hashchange'));
  }
};

const isAtDocument = asTable('visibilitychange deviceready scroll');
const nextWindowEvent = () => {
  const at = position++;
  if (at < windowTypes.length) {
    const type = windowTypes[at];
    const isHeard = type in listened || hasHandler(page, type) || hasHandler(pageDocument, type);
    if (type === 'scroll') scrollTo(page, 0, sign > 0 ? 0 : 1000000);
    if (isHeard && type === 'message' && round === 1) {
      for (let i = 0; i < settings.words.length; ++i)
        give(settings.words[i], (word) => fireAt(page, messageOf(word)));
    }
    if (isHeard && isPlausible && type === 'message') plausibleMessages();
    if (isHeard && isPlausible && type === 'hashchange') plausibleHashes();
    if (isHeard && type !== 'error') fireAt(type in isAtDocument ? pageDocument : page, windowEvent(type));
    return true;
  }
  // Events of the page's own.
  const index = at - windowTypes.length;
  if (index >= types.length) return false;
  if (!(types[index] in own)) fireAt(pageDocument, windowEvent(types[index]));
  return true;
};

const named = (name) => {
  let value = page;
  let word = '';
  for (let i = 0; i <= name.length; ++i) {
    const c = i < name.length ? name[i] : '.';
    if (c === '(' || c === ')' || c === ';') continue;
    if (c !== '.') {
      word += c;
      continue;
    }
    if (value === undefined || value === null) return undefined;
    value = value[word];
    word = '';
  }
  return value;
};

const maxTalked = 40;  // functions that hear all words
const calledBefore = {__proto__: null};  // how often, by position
const nextCallback = () => {
  const at = position++;
  if (kept.length >= maxKept) cut |= 2;
  if (at >= kept.length + keptNames.length) return false;
  try {
    const callback = at < kept.length ? kept[at] : named(keptNames[at - kept.length]);
    if (typeof callback !== 'function' || setHas(madeUp, callback)) return true;
    ++events;
    const before = calledBefore[at] || 0;
    define(calledBefore, at, before + 1);
    if (before === 0) {
      apply(callback, page, [unknownValue(0, true), unknownValue(0, true), unknownValue(0, true)]);
    } else {
      give(before - 1, (number) => apply(callback, page, [number, number, number]));
    }
    // What a plug-in may say: words that scripts compare with, and small numbers.
    if (before !== 1 || at >= maxTalked) return true;
    const {words} = settings;
    for (let i = 0; i < words.length + 16; ++i) {
      give(i < words.length ? words[i] : i - words.length, (word) => callQuietly(callback, page, [word, word, word]));
    }
  } catch (error) { /* its own fault */ }
  return true;
};

// ---- built-ins that a page has broken ------------------------------------------------------------------------------------

// They change nothing for the recorder, but may be meant to. Each is asked as code of the page would; those that
// libraries replace by others that work stay unnoticed.
const probeMap = new Map([['a', 1]]);
const probeWeak = new WeakMap([[probeMap, 1]]);
const probeSet = new WeakSet([probeMap]);
const probeElement = createElement(pageDocument, 'object');
uncurried(Element.prototype.setAttribute)(probeElement, 'title', 'x');
const pluginPrototype = getPrototypeOf(HTMLObjectElement.prototype);
const objectPrototype = HTMLObjectElement.prototype;
const self = function () {
  return this === probeMap;
};
const probes = {
  __proto__: null,
  'RegExp.prototype.test': () => /a/.test('ba') && !/a/.test('b'),
  'RegExp.prototype.exec': () => /a/.exec('ba') !== null,
  'String.prototype.indexOf': () => 'abc'.indexOf('b') === 1,
  'String.prototype.includes': () => 'abc'.includes('b'),
  'String.prototype.slice': () => 'abc'.slice(1) === 'bc',
  'Array.prototype.push': () => [1].push(1) === 2,
  'Map.prototype.get': () => probeMap.get('a') === 1 && probeMap.get('b') === undefined,
  'WeakMap.prototype.get': () => probeWeak.get(probeMap) === 1,
  'WeakSet.prototype.has': () => probeSet.has(probeMap) && !probeSet.has(probeWeak),
  'Function.prototype.call': () => self.call(probeMap),
  'Function.prototype.apply': () => self.apply(probeMap),
  'Reflect.apply': () => page.Reflect.apply(self, probeMap, []),
  'Object.defineProperty': () => page.Object.defineProperty({}, 'a', {value: 1}).a === 1,
  'JSON.stringify': () => page.JSON.stringify(true) === 'true',
  'Element.prototype.getAttribute': () => probeElement.getAttribute('title') === 'x',
  'Error.stackTraceLimit': () => NativeError.stackTraceLimit > 0,
  'HTMLObjectElement.prototype': () => getPrototypeOf(objectPrototype) === pluginPrototype,
};
const probeNames = ownKeys(probes);

const nextProbe = () => {
  const at = position++;
  if (at >= probeNames.length) return false;
  const name = probeNames[at];
  let works = false;
  try {
    works = probes[name]() === true;
  } catch (error) { /* it does not */ }
  if (works || name === '') return true;
  probeNames[at] = '';
  tell('broken', quote(name));
  return true;
};
probes[''] = () => true;

// What is bounded from one event or step to the next.
const refresh = () => {
  work = inside = 0;
  repeats = {__proto__: null};
};

// ---- a walk -------------------------------------------------------------------------------------------------------------

// Keys and clicks in an order of chance, the same in each run: into menus and out of them, through the states of a
// player. Each is a task of its own, so that what the page does after an answer, or in a timer, is done before the
// next. It goes on by itself; the driver's steps only wait for it.
const walkRounds = isPlausible ? 1 : 2;
const walkLength = 150;
const maxWaits = 40;    // of a walk, for timers
const walkWait = 3;
const maxWalked = 300;  // elements that it may go to
const moves = 5;        // keys that move, and enter: every second one is one of those
const clicks = ['mousedown', 'mouseup', 'click'];
const channel = new MessageChannel();
const postMessage = uncurried(MessagePort.prototype.postMessage);
const portAway = channel.port2;
let chance = 4711;
let walkable = [];
let isWalking = false;
let isActing = false;
let hasWaited = false;
let walked = 0;
let waits = 0;
let walkHangs = 0;

const among = (count) => {
  chance = (chance * 1103515245 + 12345) % 2147483648;
  return floor(chance / 65536) % count;
};
const findWalkable = () => {
  walkable = [];
  const isDelegated = 'click' in listened || hasHandler(pageDocument, 'click') || hasHandler(page, 'click');
  const found = queryAll(pageDocument, isDelegated ? 'body *' : 'a, button, input, label, option, summary, [onclick]');
  for (let i = 0; i < listLength(found) && walkable.length < maxWalked; ++i) push(walkable, listItem(found, i));
};
const act = () => {
  const hasKeys = wantsKeys();
  if (!hasKeys && walkable.length < 2) {
    isWalking = false;
  } else if (hasKeys && (walkable.length === 0 || among(3) > 0)) {
    const key = settings.compared[among(among(2) === 0 ? moves : settings.compared.length)];
    const target = keyTarget();
    for (let i = 0; i < 3; ++i) fireAt(target, keyEvent(keyTypes[i], key), '');
  } else {
    const element = walkable[among(walkable.length)];
    for (let i = 0; i < 3; ++i) fireAt(element, mouseEvent(clicks[i]), '');
  }
};
const walkOn = () => {
  if (!isWalking) return;
  if ((isActing && ++walkHangs >= maxHangs) || walked >= walkLength) {
    isWalking = false;
    return;
  }
  hasWaited = !hasWaited && waiting > 0 && ++waits < maxWaits;
  if (hasWaited) {
    nativeTimeout(page, walkOn, walkWait);
    return;
  }
  postMessage(portAway, 0);  // it goes on behind what hangs
  refresh();
  if (walked++ % 10 === 0) findWalkable();
  isActing = true;
  act();
  isActing = false;
};
nativeListen.call(channel.port1, 'message', walkOn);
channel.port1.start();

const nextWalk = () => {
  if (position++ === 0 && round > 0 && round <= walkRounds) {
    isWalking = true;
    isActing = hasWaited = false;
    walked = waits = walkHangs = 0;
    postMessage(portAway, 0);
  }
  isPausing = isWalking;
  return isWalking;
};

const eventPhases = [nextElement, nextKey, nextWindowEvent, nextCallback, nextWalk, nextProbe];
let phases = eventPhases;

const nextPhase = () => {
  ++phase;
  position = part = hangs = 0;
};

const state = () =>
  (phase >= phases.length ? '0 ' : isPausing ? '2 ' : '1 ') + fired + ' ' + waiting + ' ' + kept.length + ' ' + told + ' ' + (untold > 0 ? cut | 4 : cut);

const begin = (given) => {
  isWalking = false;
  phases = given;
  phase = position = part = events = hangs = 0;
  isInStep = false;
};

const driver = (command, argument, other) => {
  refresh();
  switch (command) {
    case 'function prototype': return functionPrototype;
    case 'object prototype': return objectPrototypeOfPage;
    case 'want': return want(argument, other);
    case 'in memory':
      inMemory = {__proto__: null, functions: argument, objects: other};
      return undefined;
    default:
  }
  if (command === 'begin') {
    round = argument;
    if (round > 0) release();
    sign = round % 2 === 0 ? 1 : -1;
    pointed = null;
    begin(eventPhases);
    alike = {__proto__: null};
    findElements();
  } else if (command === 'begin uncalled') {
    begin(uncalledPhases);
    beginUncalled();
  } else if (command === 'step') {
    if (isInStep && ++hangs >= (phases === eventPhases ? maxHangs : maxUncalledHangs))
      nextPhase();  // nothing but being ended leaves a step in the middle
    const begun = realNow(clock);
    isInStep = true;
    isPausing = false;
    while (phase < phases.length && !isPausing && realNow(clock) >= pressedUntil && realNow(clock) - begun < stepTime) {
      if (!phases[phase]()) nextPhase();
    }
    isInStep = false;
  }
  return state();
};
send(settings.secret + 'driver', driver);
