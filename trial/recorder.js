// Records calls on plug-in objects. Runs first in every frame, inside a function of its own, `recorder`, in front of
// uncalled.js and driver.js.
//
// The page is untrusted: whatever it patches must change nothing here. So all built-ins that are used are captured
// first; none is looked up later; handlers and descriptors have no prototype; no array is walked by its iterator; and
// nothing is reachable from the page but the callables that it gets for a plug-in's properties, which are proxies.
// Calls leave through the console's native function, with the stack that the browser itself has taken.
//
// `settings` is there already: secret, mark, world (0: nothing can be reached, 1: made up, 2: plausible), plugins (class
// identifiers), extension (one of them), documented (methods), keys, sequences (of keys), modifiers (of key events),
// words, compared (keys) and answers (values by name) that scripts compare with, origins.

const {
  apply, construct, defineProperty, get: getProperty, getOwnPropertyDescriptor, getPrototypeOf, has: hasProperty,
  ownKeys, set: setProperty, setPrototypeOf,
} = Reflect;
const uncurried = (method) => (self, ...rest) => apply(method, self, rest);
const getterOf = (prototype, name) => {
  const descriptor = getOwnPropertyDescriptor(prototype, name);
  return descriptor && descriptor.get ? uncurried(descriptor.get) : () => undefined;
};
const NativeError = Error;
const NativeProxy = Proxy;
const NativeDate = Date;
const NativePromise = Promise;
const iteratorSymbol = Symbol.iterator;
const primitiveSymbol = Symbol.toPrimitive;
const quote = JSON.stringify;
const parseJson = JSON.parse;
const isArray = Array.isArray;
const toText = String;
const toNumber = Number;
const floor = Math.floor;
const log2 = Math.log2;
const realNow = uncurried(performance.now);
const clock = performance;
const includes = uncurried(String.prototype.includes);
const startsWith = uncurried(String.prototype.startsWith);
const slice = uncurried(String.prototype.slice);
const matches = uncurried(RegExp.prototype.exec);
const push = (list, value) => defineProperty(list, list.length, {
  __proto__: null, value, writable: true, enumerable: true, configurable: true});
const mapGet = uncurried(Map.prototype.get);
const mapSet = uncurried(Map.prototype.set);
const mapSize = getterOf(Map.prototype, 'size');
const weakGet = uncurried(WeakMap.prototype.get);
const weakSet = uncurried(WeakMap.prototype.set);
const setAdd = uncurried(WeakSet.prototype.add);
const setHas = uncurried(WeakSet.prototype.has);
const send = console.debug;
const page = window;
const pageDocument = document;
const isTop = window.top === window;
const getAttribute = uncurried(Element.prototype.getAttribute);
const outerHtml = getterOf(Element.prototype, 'outerHTML');
const tagName = getterOf(Element.prototype, 'tagName');
const queryAll = uncurried(Document.prototype.querySelectorAll);
const listItem = uncurried(NodeList.prototype.item);
const listLength = getterOf(NodeList.prototype, 'length');

const define = (object, name, value) => {
  try {
    defineProperty(object, name, {__proto__: null, value, writable: true, enumerable: false, configurable: true});
  } catch (error) { /* stays as it is */ }
};
const noop = () => undefined;

// ---- what leaves -----------------------------------------------------------------------------------------------------

const maxArgument = 80;
const shownText = (text) => quote(text.length > maxArgument ? slice(text, 0, maxArgument) + '…' : text);

// An argument as it is shown, without running any code of the page.
const shown = (value) => {
  switch (typeof value) {
    case 'string': return shownText(value);
    case 'symbol': return 'symbol';
    case 'bigint': return 'bigint';
    case 'function': return setHas(madeUp, value) ? '(made up)' : 'function';
    case 'object': return value === null ? 'null' : isArray(value) ? '[…]' : '{…}';
    default: return toText(value);
  }
};

const shownArguments = (list) => {
  let text = '';
  for (let i = 0; i < list.length && i < 8; ++i) text += (i === 0 ? '' : ', ') + shown(list[i]);
  return list.length > 8 ? text + ', …' : text;
};

// Of one method: the first calls are all told, then those that come from another place, then fewer and fewer.
const maxTold = 40;
const maxPlaced = 5000;
const maxMethods = 2000;
const counts = new Map();
const placesOf = new Map();
let isPlacing = false;
let told = 0;
let untold = 0;

const placeKey = () => {
  if (isPlacing) return undefined;  // the page's own code, called to show the stack
  isPlacing = true;
  try {
    const {stack} = new NativeError();
    return typeof stack === 'string' ? stack : undefined;
  } catch (error) {
    return undefined;
  } finally {
    isPlacing = false;
  }
};

const isWorthTelling = (name) => {
  const count = (mapGet(counts, name) || 0) + 1;
  if (count === 1 && mapSize(counts) >= maxMethods) {
    ++untold;
    return false;
  }
  mapSet(counts, name, count);
  if (count <= maxTold) return true;
  if (count > maxPlaced) return (count & (count - 1)) === 0;
  const place = placeKey();
  if (place === undefined) return count % 64 === 0;
  const key = name + '\n' + place;
  if (mapGet(placesOf, key) === true || mapSize(placesOf) >= maxPlaced) return false;
  mapSet(placesOf, key, true);
  return true;
};

const tell = (kind, fields) => send(settings.secret + kind + '\n' + fields);

// The text of a value that is no name: that of a member of a made up value, mostly.
const isNothing = (name) =>
  name === '' || name === 'undefined' || name === 'null' || name === 'NaN' || name === 'true' || name === 'false' ||
  startsWith(name, '[object ') || startsWith(name, 'function ') || startsWith(name, 'class ') || includes(name, '=>');

// A word that the driver gives as the answer of a plug-in or another page. As the name of a method it is made up; that
// nobody knows that name is told when the answer has the mark.
let given;
let inside = 0;  // built-ins that use patterns, as the page's own code would
const isGiven = (name) =>
  given !== undefined && given !== '' && slice(name, -given.length) === given;
// Words that are values of a plausible world. A name that begins or ends so may be made of one.
const handedOut = settings.world === 2 ? ['0', '1', '2', '3', 'true', 'false', 'undefined', 'null', 'NaN'] : [];
const isHandedOut = (name) => {
  for (let i = 0; i < handedOut.length; ++i) {
    if (startsWith(name, handedOut[i]) || slice(name, -handedOut[i].length) === handedOut[i]) return true;
  }
  return false;
};

const record = (plugin, method, list) => {
  let name = method;
  let isUnknown = false;
  if (method === 'Execute') {
    const first = list.length > 0 ? list[0] : undefined;
    if (typeof first === 'string') {
      name = first;
    } else if (list.length > 0 || plugin === settings.extension) {
      isUnknown = true;
    }
    if (setHas(madeUp, first)) isUnknown = true;
  }
  if (includes(name, settings.mark) || isNothing(name)) isUnknown = true;
  if (isGiven(name)) return;
  if (!isUnknown && settings.documented[name] === 1) return;
  if (!isWorthTelling(plugin + ' ' + (isUnknown ? '' : name))) return;
  ++told;
  tell(isUnknown ? 'unknown' : isHandedOut(name) ? 'word' : 'call',
       quote(plugin) + '\n' + shownText(name) + '\n' + shownArguments(list));
};

// ---- values that nobody knows ------------------------------------------------------------------------------------------

// What a plug-in or the network would have answered: callable, with any property, a text that carries the mark, a number.
const madeUp = new WeakSet();
const maxDepth = 10;
const maxWork = 200000;
let work = 0;  // since the driver's last step
const kept = [];  // functions that plug-ins were given
const maxKept = 500;
const keptSet = new WeakSet();

const keep = (value, depth) => {
  if (typeof value === 'function') {
    if (setHas(madeUp, value) || setHas(keptSet, value) || kept.length >= maxKept) return;
    setAdd(keptSet, value);
    push(kept, value);
  } else if (typeof value === 'object' && value !== null && depth > 0) {
    try {
      const keys = ownKeys(value);
      for (let i = 0; i < keys.length && i < 30; ++i) {
        const descriptor = getOwnPropertyDescriptor(value, keys[i]);
        if (descriptor && 'value' in descriptor) keep(descriptor.value, depth - 1);
      }
    } catch (error) { /* a proxy of the page */ }
  }
};

const keepAll = (list) => {
  for (let i = 0; i < list.length && i < 20; ++i) keep(list[i], 2);
};

const isMade = settings.world > 0;
const isPlausible = settings.world === 2;
const number = settings.world === 1 ? 0 : 1;

// In a plausible world, the values that scripts compare something of that name with, in turn.
const turns = {__proto__: null};
const plausible = (name) => {
  if (!isPlausible || !(name in settings.answers)) return undefined;
  const values = settings.answers[name];
  const turn = turns[name] || 0;
  turns[name] = turn + 1;
  const value = values[turn % values.length];
  if (typeof value === 'string' && turn < values.length) push(handedOut, value);
  return value;
};
const itemsOf = (depth) => (isPlausible && depth < 3 ? 8 : 1);
const functionMembers = {__proto__: null, call: 1, apply: 1, bind: 1};
const textMembers = {__proto__: null};
for (const name of Object.getOwnPropertyNames(String.prototype)) {
  if (typeof ''[name] === 'function' && name !== 'constructor') textMembers[name] = String.prototype[name];
}
const listMembers = {__proto__: null};
for (const name of Object.getOwnPropertyNames(Array.prototype)) {
  if (typeof [][name] === 'function' && name !== 'constructor') listMembers[name] = 1;
}
const valueMembers = {__proto__: null};
for (const prototype of [Number.prototype, Date.prototype, RegExp.prototype, Promise.prototype, Object.prototype,
                         Function.prototype]) {
  for (const name of Object.getOwnPropertyNames(prototype)) {
    const descriptor = getOwnPropertyDescriptor(prototype, name);
    if (name !== 'constructor' && !(name in functionMembers) && typeof descriptor.value === 'function')
      valueMembers[name] = 1;
  }
}

const callQuietly = (callback, self, list) => {
  try {
    return apply(callback, self, list);
  } catch (error) {
    return undefined;
  }
};

// What a made up value answers for a property that every value has; undefined: none of those.
const commonMember = (key, depth) => {
  const made = (behaviour) => unknownValue(depth + 1, false, behaviour);
  if (key === primitiveSymbol) return (hint) => (hint === 'number' ? number : settings.mark);
  if (key === iteratorSymbol) {
    return () => {
      let left = itemsOf(depth);
      return {
        __proto__: null,
        next: () => {
          const done = --left < 0;
          return {__proto__: null, done, value: done ? undefined : unknownValue(depth + 1)};
        },
      };
    };
  }
  if (key === 'length') return number;
  if (key === 'toString' || key === 'toLocaleString' || key === 'toJSON') return () => settings.mark;
  if (key === 'valueOf') return () => number;
  if (key in textMembers) {
    return made((list) => {
      for (let i = 0; i < list.length; ++i) {
        if (typeof list[i] === 'function' && !setHas(madeUp, list[i])) {
          callQuietly(list[i], undefined, [settings.mark]);
          return settings.mark;
        }
      }
      return callQuietly(textMembers[key], settings.mark, list);
    });
  }
  if (key in listMembers) {
    return made((list) => {
      if (typeof list[0] === 'function') {
        for (let i = 0; i < itemsOf(depth); ++i) {
          const item = unknownValue(depth + 1);
          callQuietly(list[0], list[1], key === 'reduce' || key === 'reduceRight' ? [list[1], item, i] : [item, i]);
        }
      }
      return unknownValue(depth + 1);
    });
  }
  if (key in valueMembers) return made(() => (startsWith(key, 'to') ? settings.mark : number));
  return undefined;
};

function unknownValue(depth, isSettled, behaviour) {
  if (depth > maxDepth || ++work > maxWork) return undefined;
  const own = {__proto__: null};
  const target = function () {};
  const value = new NativeProxy(target, {
    __proto__: null,
    get: (_, key) => {
      if (key in own) return own[key];
      if (typeof key === 'string' && key in functionMembers) return target[key];
      if (key === 'prototype') return target.prototype;
      if (key === 'then' || key === 'catch' || key === 'finally') {
        if (isSettled) return undefined;
        return (callback) => {
          if (key !== 'catch' && typeof callback === 'function') keepSoon(callback, depth);
          return unknownValue(depth + 1);
        };
      }
      const common = commonMember(key, depth);
      if (common !== undefined) return common;
      // A library that asks whether this is one of its own objects gets no.
      if (typeof key === 'symbol' || matches(strange, key) !== null) return undefined;
      own[key] = plausible(key);
      if (own[key] === undefined) own[key] = unknownValue(depth + 1);
      return own[key];
    },
    set: (_, key, given) => {
      own[key] = given;
      keep(given, 1);
      return true;
    },
    has: () => true,
    deleteProperty: (_, key) => delete own[key],
    apply: (_, self, list) => {
      if (behaviour !== undefined) return behaviour(list);
      keepAll(list);
      return unknownValue(depth + 1);
    },
    construct: () => unknownValue(depth + 1) || {},
  });
  setAdd(madeUp, value);
  return value;
}

// ---- timers and the clock ------------------------------------------------------------------------------------------------

const nativeTimeout = uncurried(page.setTimeout);
const nativeInterval = uncurried(page.setInterval);
const maxTicks = 60;  // of one interval
const start = [1400000000000, 1400014400000, 1399971600000][settings.world];  // afternoon, evening, morning
let now = start;
let fired = 0;
let waiting = 0;

// Monotonous, so that the order stays: a second takes 24 ms, an hour 70 ms.
const shortened = (delay) => {
  const given = toNumber(delay);
  return given > 0 ? floor(4 * log2(1 + given / 16)) : 0;
};

function keepSoon(callback, depth) {
  ++waiting;
  nativeTimeout(page, () => {
    --waiting;
    ++fired;
    callback(unknownValue(depth + 1, true));
  }, 0);
}

const advanceTo = (time) => {
  if (time > now && time < start * 2) now = time;
};

// Long ones wait until the page has been driven once: what they take away is there until then.
const nativeClear = uncurried(page.clearTimeout);
const mapDelete = uncurried(Map.prototype.delete);
const longDelay = 250;
let longTimers = 0;  // that did not wait
const held = new Map();
const heldIds = [];
let isHolding = true;

const hold = (callback, delay) => {
  const id = nativeTimeout(page, noop, 2000000000);
  mapSet(held, id, {__proto__: null, callback, delay});
  push(heldIds, id);
  return id;
};

const release = () => {
  isHolding = false;
  for (let i = 0; i < heldIds.length; ++i) {
    const id = heldIds[i];
    const timer = mapGet(held, id);
    if (timer === undefined) continue;
    ++waiting;
    nativeTimeout(page, () => {
      --waiting;
      if (mapGet(held, id) === undefined) return;
      mapDelete(held, id);
      ++fired;
      if (typeof timer.callback === 'function') timer.callback();
      else nativeTimeout(page, timer.callback, 0);
    }, shortened(timer.delay));
  }
  heldIds.length = 0;
};

define(page, 'setTimeout', function setTimeout(callback, delay, ...rest) {
  const wanted = toNumber(delay) > 0 ? toNumber(delay) : 0;
  const isHeld = isHolding && wanted > longDelay && heldIds.length < 1000;
  if (typeof callback !== 'function') {
    const text = toText(callback);
    return isHeld ? hold(text, wanted) : nativeTimeout(page, text, shortened(wanted));
  }
  const due = now + wanted;
  const run = () => {
    advanceTo(due);
    return apply(callback, page, rest);
  };
  if (isHeld) return hold(run, wanted);
  ++waiting;
  if (wanted > longDelay) ++longTimers;
  return nativeTimeout(page, () => {
    --waiting;
    ++fired;
    return run();
  }, shortened(wanted));
});

// Frames of an animation come fast, too, until there were many.
const nativeFrame = uncurried(page.requestAnimationFrame);
const nativeCancel = uncurried(page.cancelAnimationFrame);
const maxFrames = 600;
const frames = new Map();
let frameCount = 0;
define(page, 'requestAnimationFrame', function requestAnimationFrame(callback) {
  if (typeof callback !== 'function' || ++frameCount > maxFrames) return nativeFrame(page, callback);
  const id = nativeTimeout(page, () => {
    mapDelete(frames, id);
    advanceTo(now + 16);
    return apply(callback, page, [now - start]);
  }, 4);
  mapSet(frames, id, true);
  return id;
});
define(page, 'cancelAnimationFrame', function cancelAnimationFrame(id) {
  if (mapDelete(frames, id)) nativeClear(page, id);
  else nativeCancel(page, id);
});
for (const name of ['clearTimeout', 'clearInterval']) {
  define(page, name, (id) => {
    mapDelete(held, id);
    nativeClear(page, id);
  });
}
define(page, 'setInterval', function setInterval(callback, delay, ...rest) {
  const every = shortened(delay) + 4;
  if (typeof callback !== 'function') return nativeInterval(page, callback, every + 50);
  let ticks = 0;
  return nativeInterval(page, () => {
    if (++ticks > maxTicks && ticks % 50 !== 0) return undefined;
    if (ticks <= maxTicks) ++fired;
    advanceTo(now + (toNumber(delay) > 0 ? toNumber(delay) : 0));
    return apply(callback, page, rest);
  }, every);
});

const FixedDate = new NativeProxy(NativeDate, {
  __proto__: null,
  apply: () => toText(new NativeDate(++now)),
  construct: (target, list, newTarget) =>
    construct(target, list.length === 0 ? [++now] : list, newTarget === FixedDate ? target : newTarget),
});
define(NativeDate, 'now', () => ++now);
define(NativeDate.prototype, 'constructor', FixedDate);
define(page, 'Date', FixedDate);
define(Performance.prototype, 'now', () => ++now - start);
let seed = 12345;
define(Math, 'random', () => {
  seed = (seed * 1103515245 + 12345) % 2147483648;
  return seed / 2147483648;
});
define(Crypto.prototype, 'getRandomValues', (list) => {
  for (let i = 0; i < list.length; ++i) list[i] = i * 37 + 11;
  return list;
});

// ---- plug-in objects --------------------------------------------------------------------------------------------------

const plugins = settings.plugins;
const known = new Map();  // element text -> class identifier
const maxText = 4000;

const classIn = (text) => {
  let found = '';
  for (let i = 0; i < plugins.length; ++i) {
    if (plugins[i].length > found.length && includes(text, plugins[i])) found = plugins[i];
  }
  return found;
};

const classOfText = (text) => {
  const before = mapGet(known, text);
  if (before !== undefined) return before;
  const found = classIn(text);
  if (mapSize(known) < 10000) mapSet(known, text, found);
  return found;
};

const ownText = (object, name) => {
  const descriptor = getOwnPropertyDescriptor(object, name);
  return descriptor && typeof descriptor.value === 'string' ? descriptor.value : '';
};

// The class identifier of an element; empty for one that is no plug-in.
const classOf = (element) => {
  try {
    const attribute = getAttribute(element, 'classid');
    if (typeof attribute === 'string') {
      const found = classOfText(slice(attribute, 0, maxText));
      if (found !== '') return found;
    }
    const property = ownText(element, 'classid') || ownText(element, 'classId') || ownText(element, 'CLASSID');
    if (property !== '') {
      const found = classOfText(slice(property, 0, maxText));
      if (found !== '') return found;
    }
    return classOfText(slice(outerHtml(element), 0, maxText));
  } catch (error) {
    return '';  // not an element
  }
};
// Names that libraries ask every element for, to find out what it is or to keep data there; and those of old browsers.
const notPlugin = {__proto__: null};
for (const name of ('then toJSON length window document documentElement ownerDocument selector jquery splice item each ' +
     'forEach callee nodeType nodeName size attachEvent detachEvent fireEvent currentStyle runtimeStyle readyState ' +
     'filters all frameElement parentWindow uniqueID sourceIndex createTextRange doScroll canHaveChildren scopeName ' +
     'tagUrn asymmetricMatch isReactComponent render constructor prototype inspect callPageFunction setInterval ' +
     'msMatchesSelector mozMatchesSelector oMatchesSelector webkitMatchesSelector matchesSelector __proto__ $$typeof ' +
     'promise object componentFromPoint addBehavior removeBehavior swapNode applyElement mergeAttributes clearAttributes ' +
     'unselectable hideFocus isContentEditable value checked disabled selected options elements files href src alt ' +
     'schedule subscribe unsubscribe lift pipe getReader peek addListener removeListener asObservable tag view closed ' +
     'defaultValue text rel method action cells rows multiple max min step indeterminate').split(' ')) {
  notPlugin[name] = 1;
}
const strange =
  /^(on[a-z]+$|jQuery|sizzle|sizcache|Sizzle|__|_react|_vue|_(leave|enter|move)Cb$|_vei|_v_|\$\$|ng[A-Z0-9]|_ko|_moo|uid$|_prototype|_dj|_yui|ext-|data-)|[0-9]{6}/;

const callables = new WeakMap();  // element -> its callables by name
const lastResults = {__proto__: null};
let repeats = {__proto__: null};  // calls of one method since the driver's last step
const maxRepeats = 300;

// What a plug-in answers in a plausible world: at first what most do if all is well, later other things, too. The
// functions that it got are called soon.
const plainAnswers = [1, 1, 0, unknownValue(0), 2, '', true, -1, false, 3];
const answerCounts = {__proto__: null};
const maxSoon = 20;
const plainAnswer = (key, method, list) => {
  const count = answerCounts[key] || 0;
  answerCounts[key] = count + 1;
  for (let i = 0; i < list.length && i < 5 && count < maxSoon; ++i) {
    if (typeof list[i] === 'function' && !setHas(madeUp, list[i])) callSoon(list[i]);
  }
  const value = plausible(method + '()');
  return value === undefined ? plainAnswers[count % plainAnswers.length] : value;
};
const callSoon = (callback) => {
  ++waiting;
  nativeTimeout(page, () => {
    --waiting;
    ++fired;
    callback(1);
  }, 0);
};

// What a plug-in's property is: only if it is called, that is told.
const callable = (plugin, method, depth) => {
  const target = function () {};
  const own = {__proto__: null};
  const called = (list) => {
    record(plugin, method, list);
    keepAll(list);
    const key = plugin + ' ' + method;
    repeats[key] = (repeats[key] || 0) + 1;
    if (isPlausible && repeats[key] < maxRepeats) return plainAnswer(key, method, list);
    if (repeats[key] < maxRepeats) return unknownValue(0);
    if (repeats[key] === maxRepeats) lastResults[key] = unknownValue(0);
    return repeats[key] % 50 === 0 ? 0 : lastResults[key];  // 0 is what a loop waits for
  };
  const made = new NativeProxy(target, {
    __proto__: null,
    get: (_, key) => {
      if (key in own) return own[key];
      if (key === 'prototype' || key === 'name') return target[key];
      if (typeof key === 'string' && key in functionMembers) return target[key];
      if (key === 'then') return undefined;
      const common = commonMember(key, 0);
      if (common !== undefined) return common;
      if (typeof key === 'symbol' || depth > 3 || ++work > maxWork) return undefined;
      if (key in notPlugin || matches(strange, key) !== null) return undefined;
      own[key] = callable(plugin, key, depth + 1);
      return own[key];
    },
    set: (_, key, given) => {
      own[key] = given;
      keep(given, 1);
      return true;
    },
    apply: (_, self, list) => called(list),
    construct: (_, list) => {
      const result = called(list);
      return result === 0 || result === undefined ? {} : result;
    },
  });
  setAdd(madeUp, made);
  return made;
};

const pluginProperty = (element, key) => {
  if (key in notPlugin || matches(strange, key) !== null) return undefined;
  const plugin = classOf(element);
  if (plugin === '') return undefined;
  let names = weakGet(callables, element);
  if (names === undefined || names['#'] !== plugin) {
    names = {__proto__: null, '#': plugin};
    weakSet(callables, element, names);
  }
  if (!(key in names)) names[key] = callable(plugin, key, 0);
  return names[key];
};

const answering = (prototype) => new NativeProxy(prototype, {
  __proto__: null,
  get: (target, key, receiver) => {
    if (typeof key === 'symbol' || hasProperty(target, key)) return getProperty(target, key, receiver);
    return pluginProperty(receiver, key);
  },
  has: (target, key) =>
    hasProperty(target, key) ||
    (typeof key === 'string' && !(key in page) && !(key in notPlugin) && matches(strange, key) === null),
  set: (target, key, value, receiver) => {
    keep(value, 1);
    if (typeof value === 'string' && receiver !== undefined) keepNamed(value);
    return setProperty(target, key, value, receiver);
  },
});
const keptNames = [];
const keepNamed = (name) => {
  if (keptNames.length < 100 && matches(/^[\w$.]{1,60}(\(\))?;?$/, name) !== null) push(keptNames, name);
};
setPrototypeOf(HTMLObjectElement.prototype, answering(getPrototypeOf(HTMLObjectElement.prototype)));
setPrototypeOf(HTMLEmbedElement.prototype, answering(getPrototypeOf(HTMLEmbedElement.prototype)));

// Objects count among the embeds, as in old browsers.
const embeds = () => {
  const found = queryAll(pageDocument, 'object, embed');
  const list = [];
  for (let i = 0; i < listLength(found); ++i) {
    const element = listItem(found, i);
    if (classOf(element) === '' && tagName(element) !== 'EMBED') continue;
    push(list, element);
    const name = getAttribute(element, 'name') || getAttribute(element, 'id');
    if (typeof name === 'string' && name !== '' && name !== 'length') define(list, name, element);
  }
  define(list, 'item', (at) => list[at]);
  define(list, 'namedItem', (name) => list[name]);
  return list;
};
for (const name of ['embeds', 'plugins']) {
  defineProperty(Document.prototype, name, {__proto__: null, get: embeds, enumerable: true, configurable: true});
}

// ---- the world around a page ------------------------------------------------------------------------------------------

for (const name of Object.getOwnPropertyNames(console)) {
  if (typeof console[name] === 'function') define(console, name, noop);
}
define(page, 'alert', noop);
define(page, 'confirm', () => settings.world !== 1);
define(page, 'prompt', () => settings.mark);
define(page, 'print', noop);
define(page, 'close', noop);
define(page, 'stop', noop);
define(page, 'moveTo', noop);

// A pop-up is a frame; there are few.
const createElement = uncurried(Document.prototype.createElement);
const appendChild = uncurried(Node.prototype.appendChild);
const rootOf = getterOf(Document.prototype, 'documentElement');
const setSource = uncurried(getOwnPropertyDescriptor(HTMLIFrameElement.prototype, 'src').set);
const frameWindow = getterOf(HTMLIFrameElement.prototype, 'contentWindow');
let popUps = 0;
define(page, 'open', (url) => {
  if (++popUps > 3 || !isTop) return null;
  try {
    const frame = createElement(pageDocument, 'iframe');
    if (url !== undefined && url !== '') setSource(frame, url);
    appendChild(rootOf(pageDocument), frame);
    return frameWindow(frame);
  } catch (error) {
    return null;
  }
});

// Elements that stand in no document, and roots that it does not tell of.
const loose = [];
const roots = [];
const maxLoose = 50;
const maxRoots = 300;
for (const name of ['Audio', 'Image']) {
  const native = page[name];
  const known = new NativeProxy(native, {
    __proto__: null,
    construct: (target, list, newTarget) => {
      const element = construct(target, list, newTarget === known ? target : newTarget);
      if (loose.length < maxLoose) push(loose, element);
      return element;
    },
  });
  define(page, name, known);
}
const attachShadow = uncurried(Element.prototype.attachShadow);
define(Element.prototype, 'attachShadow', function attach(options) {
  const root = attachShadow(this, options);
  if (roots.length < maxRoots) push(roots, root);
  return root;
});

// Workers do not run; a page goes on with one that never answers.
const fakeWorker = function () {
  return unknownValue(0, true);
};
for (const name of ['Worker', 'SharedWorker', 'EventSource', 'RTCPeerConnection', 'webkitRTCPeerConnection',
                    'WebTransport', 'BroadcastChannel', 'Notification', 'PaymentRequest']) {
  if (name in page) define(page, name, fakeWorker);
}
if (page.ServiceWorkerContainer) define(ServiceWorkerContainer.prototype, 'register', () => unknownValue(0));

// Texts that begin with a word that scripts compare with, and go on with what nobody knows.
const separators = [' ', ':', '/', '|', ',', '='];
const wordCount = settings.words.length < 12 ? settings.words.length : 12;
const wordsOfText = (at) => {
  const word = settings.words[at % settings.words.length];
  const separator = separators[floor(at / settings.words.length) % separators.length];
  return word + separator + settings.mark + separator + settings.mark;
};

// A socket that opens and gets messages, of which nobody knows what they say.
define(page, 'WebSocket', function WebSocket() {
  const socket = {readyState: isMade ? 1 : 0, send: noop, close: noop};
  const listeners = [];
  socket.addEventListener = (type, listener) => push(listeners, {__proto__: null, type, listener});
  socket.removeEventListener = noop;
  const fire = (type, data) => {
    const event = {type, data, target: socket, currentTarget: socket};
    if (typeof socket['on' + type] === 'function') callQuietly(socket['on' + type], socket, [event]);
    for (let i = 0; i < listeners.length; ++i) {
      if (listeners[i].type === type && typeof listeners[i].listener === 'function')
        callQuietly(listeners[i].listener, socket, [event]);
    }
  };
  ++waiting;
  nativeTimeout(page, () => {
    --waiting;
    ++fired;
    if (settings.world === 0) {
      fire('error');
      fire('close');
    } else {
      fire('open');
      fire('message', settings.mark);
      for (let i = 0; isPlausible && i < wordCount; ++i) fire('message', wordsOfText(i));
    }
  }, 1);
  return socket;
});

// Navigation of the page itself: told, so that it can be a page of its own, and refused.
if (isTop && page.navigation) {
  const prevent = uncurried(Event.prototype.preventDefault);
  const listen = uncurried(EventTarget.prototype.addEventListener);
  const destinationOf = getterOf(NavigateEvent.prototype, 'destination');
  const isHashOnly = getterOf(NavigateEvent.prototype, 'hashChange');
  const urlOf = getterOf(NavigationDestination.prototype, 'url');
  const isSame = getterOf(NavigationDestination.prototype, 'sameDocument');
  let navigations = 0;
  listen(page.navigation, 'navigate', (event) => {
    const destination = destinationOf(event);
    if (isHashOnly(event) || isSame(destination)) return;
    prevent(event);
    if (++navigations <= 100) tell('navigation', quote(slice(urlOf(destination), 0, 2000)));
  });
}

// What nobody has stored and no address says: empty, or marked.
if (isMade) {
  const isMarked = (text) => typeof text === 'string' && includes(text, settings.mark);
  // What a getter says, or something else if that is nothing.
  const instead = (prototype, name, made) => {
    const descriptor = getOwnPropertyDescriptor(prototype, name);
    const original = uncurried(descriptor.get);
    defineProperty(prototype, name, {
      __proto__: null, enumerable: true, configurable: true, set: descriptor.set, get() {
        return made(original(this), this);
      }});
  };
  define(JSON, 'parse', function parse(text, reviver) {
    if (isMarked(text)) {
      try {
        const value = parseJson(text, reviver);
        if (typeof value === 'object' && value !== null) return value;
      } catch (error) { /* no JSON */ }
      return unknownValue(0, true);
    }
    return parseJson(text, reviver);
  });
  const unset = (prototype, name) => {
    const original = uncurried(prototype[name]);
    define(prototype, name, function (key) {
      const value = original(this, key);
      if (value !== null) return value;
      let made = plausible(toText(key));
      if (made === undefined) made = plausible(name + '()');
      return made === undefined ? settings.mark : toText(made);
    });
  };
  unset(Storage.prototype, 'getItem');
  unset(URLSearchParams.prototype, 'get');
  unset(Headers.prototype, 'get');
  unset(XMLHttpRequest.prototype, 'getResponseHeader');
  const hasParameter = uncurried(URLSearchParams.prototype.has);
  const textOfParameters = uncurried(URLSearchParams.prototype.toString);
  define(URLSearchParams.prototype, 'has', function has(...list) {
    return apply(hasParameter, undefined, [this, ...list]) || isMarked(textOfParameters(this));
  });
  const originalJson = uncurried(Response.prototype.json);
  const originalThen = uncurried(Promise.prototype.then);
  define(Response.prototype, 'json', function json() {
    return originalThen(originalJson(this), (value) => (typeof value === 'object' ? value : unknownValue(0, true)),
                        () => unknownValue(0, true));
  });
  define(HTMLMediaElement.prototype, 'play', () => new NativePromise((resolve) => resolve()));
  const responseType = getterOf(XMLHttpRequest.prototype, 'responseType');
  const readyState = getterOf(XMLHttpRequest.prototype, 'readyState');
  instead(XMLHttpRequest.prototype, 'response', (value, request) =>
    (value === null || (isMarked(value) && responseType(request) === 'json') ? unknownValue(0, true) : value));
  instead(XMLHttpRequest.prototype, 'responseXML', (value, request) =>
    (value === null && readyState(request) === 4 ? unknownValue(0, true) : value));
  instead(Document.prototype, 'cookie', (value) => (value === '' ? settings.mark + '=' + settings.mark : value));
  const parseMarkup = uncurried(DOMParser.prototype.parseFromString);
  define(DOMParser.prototype, 'parseFromString', function parseFromString(text, type) {
    return isMarked(text) && includes(toText(type), 'xml') ? unknownValue(0, true) : parseMarkup(this, text, type);
  });

  // What a text is made of that nobody knows: parts that nobody knows. Each pattern finds something in it once.
  let readings = 0;
  const maxReadings = 5000;
  const split = uncurried(String.prototype.split);
  define(String.prototype, 'split', function (...list) {
    const parts = apply(split, undefined, [this, ...list]);
    const text = parts.length === 1 ? parts[0] : '';
    if (text.length > 300 || list[0] === undefined || !isMarked(text) || ++readings > maxReadings) return parts;
    for (let i = 0; i < 3; ++i) push(parts, text);
    return parts;
  });
  const seen = new WeakSet();
  const read = (pattern, text) => {
    if (text.length > 300 || !isMarked(text) || setHas(seen, pattern) || ++readings > maxReadings) return null;
    setAdd(seen, pattern);
    const found = [];
    for (let i = 0; i < 6; ++i) push(found, text);
    define(found, 'index', 0);
    define(found, 'input', text);
    define(found, 'groups', unknownValue(0, true));
    return found;
  };
  const isGlobal = getterOf(RegExp.prototype, 'global');
  const {match} = Symbol;
  for (const symbol of [Symbol.replace, Symbol.split, Symbol.matchAll, match]) {
    const original = uncurried(RegExp.prototype[symbol]);
    define(RegExp.prototype, symbol, function (...list) {
      const before = inside;
      inside = 1;
      try {
        const found = apply(original, undefined, [this, ...list]);
        return found === null && symbol === match && before === 0 ? read(this, toText(list[0])) : found;
      } finally {
        inside = before;
      }
    });
  }
  const test = uncurried(RegExp.prototype.test);
  define(RegExp.prototype, 'test', function (text) {
    const before = inside;
    if (!isPlausible) inside = 1;
    try {
      return test(this, text);
    } finally {
      inside = before;
    }
  });
  define(RegExp.prototype, 'exec', function exec(text) {
    const found = matches(this, text);
    if (found !== null || inside !== 0 || typeof text !== 'string' || isGlobal(this)) return found;
    return read(this, text);
  });
}
