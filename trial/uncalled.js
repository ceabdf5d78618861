// Calls functions that never ran, if that was asked for. Stands between recorder.js and driver.js in the same function.
//
// Which functions those are the browser's coverage says; here they are known by their texts. The functions, and the
// objects that may be what they take for `this`, come from the browser's list of what is in the memory of the page.
// Arguments are values that nobody knows.

const functionText = uncurried(Function.prototype.toString);
const isView = ArrayBuffer.isView;
const NativeWeakSet = WeakSet;
const NativeWeakMap = WeakMap;
const functionPrototype = Function.prototype;
const objectPrototypeOfPage = Object.prototype;
const maxWanted = 5000;
const maxUncalled = 2000;   // of a frame
const maxSame = 3;          // functions with the same text
const maxInMemory = 300000;
const maxMembers = 500;
const atOnce = 200;

const wanted = new Map();    // text -> its place in order
const lengths = {__proto__: null};  // of these texts
const constructors = [];     // texts of constructors in classes, which have the class's text
const calledOnes = new WeakSet();
let inMemory = {__proto__: null, functions: [], objects: []};
let byText = {__proto__: null};  // functions to call, by the place in order of their texts
let candidates = new NativeWeakSet();
let holders = new NativeWeakMap();     // function -> object that has it as a member
let instances = new NativeWeakMap();   // object -> one that inherits from it
let toCall = [];
const results = [];              // functions that they made stay in memory
const generator = /^(async\s*)?(function\s*)?\*/;
let uncalled = 0;                // that were called

const scriptText = functionText(recorder);

// None of those of this script: a page could have the same texts in its own.
const want = (source, ranges) => {
  for (let i = 0; i + 1 < ranges.length && mapSize(wanted) < maxWanted; i += 2) {
    const text = slice(source, ranges[i], ranges[i + 1]);
    if (mapGet(wanted, text) !== undefined || includes(scriptText, text)) continue;
    mapSet(wanted, text, mapSize(wanted));
    lengths[text.length] = 1;
    if (startsWith(text, 'constructor')) push(constructors, text);
  }
};

const constructorIn = (text) => {
  for (let i = 0; i < constructors.length; ++i) {
    if (includes(text, constructors[i])) return mapGet(wanted, constructors[i]);
  }
  return undefined;
};

const nextInMemory = () => {
  const {functions} = inMemory;
  const end = position + atOnce;
  for (; position < end; ++position) {
    if (position >= functions.length || position >= maxInMemory) return false;
    const found = functions[position];
    if (typeof found !== 'function' || setHas(madeUp, found) || setHas(calledOnes, found)) continue;
    const text = functionText(found);
    let order = text.length in lengths ? mapGet(wanted, text) : undefined;
    if (order === undefined && constructors.length > 0 && startsWith(text, 'class')) order = constructorIn(text);
    if (order === undefined) continue;
    if (!(order in byText)) byText[order] = [];
    if (byText[order].length >= maxSame) continue;
    push(byText[order], found);
    setAdd(candidates, found);
  }
  return true;
};

const ownMember = (object, key) => {
  const descriptor = getOwnPropertyDescriptor(object, key);
  return descriptor === undefined ? {__proto__: null} : setPrototypeOf(descriptor, null) && descriptor;
};

const remember = (object, member) => {
  if (typeof member === 'function' && setHas(candidates, member) && weakGet(holders, member) === undefined)
    weakSet(holders, member, object);
};

const isPrototype = (object) => {
  const {value} = ownMember(object, 'constructor');
  return typeof value === 'function' && ownMember(value, 'prototype').value === object;
};

const lookAt = (object) => {
  if (object === null || setHas(madeUp, object) || isView(object) || (isArray(object) && object.length > maxMembers)) return;
  const keys = ownKeys(object);
  for (let i = 0; i < keys.length && i < maxMembers; ++i) {
    const member = ownMember(object, keys[i]);
    remember(object, member.value);
    remember(object, member.get);
    remember(object, member.set);
  }
  let above = getPrototypeOf(object);
  for (let i = 0; i < 6 && above !== null && above !== objectPrototypeOfPage; ++i) {
    const known = weakGet(instances, above);
    if (known === undefined || (isPrototype(known) && !isPrototype(object))) weakSet(instances, above, object);
    above = getPrototypeOf(above);
  }
};

const nextHolder = () => {
  const {objects} = inMemory;
  const end = position + atOnce;
  while (position < end) {
    if (position >= objects.length || position >= maxInMemory) return false;
    const at = position++;
    try {
      lookAt(objects[at]);
    } catch (error) { /* a proxy of the page */ }
  }
  return true;
};

const nobodyKnows = () => [unknownValue(0, true), unknownValue(0, true), unknownValue(0, true), unknownValue(0, true)];

const madeBy = (constructor) => {
  const made = construct(constructor, nobodyKnows());
  const prototype = ownMember(constructor, 'prototype').value;
  if (typeof prototype === 'object' && prototype !== null) weakSet(instances, prototype, made);
  return made;
};

const isConstructor = (callee) => {
  if (startsWith(functionText(callee), 'class')) return true;
  const {value} = ownMember(callee, 'prototype');
  return typeof value === 'object' && value !== null && ownKeys(value).length > 1;
};

// What a function may take for `this`: an object that has it, or inherits it.
const selfFor = (callee) => {
  const holder = weakGet(holders, callee);
  if (holder === undefined) return page;
  const instance = weakGet(instances, holder);
  if (instance !== undefined) return instance;
  if (!isPrototype(holder)) return holder;
  try {
    return madeBy(ownMember(holder, 'constructor').value);
  } catch (error) {
    return setPrototypeOf({}, holder);
  }
};

const collectUncalled = () => {
  toCall = [];
  for (let order = 0; order < mapSize(wanted); ++order) {
    const same = byText[order];
    for (let i = 0; same !== undefined && i < same.length; ++i) push(toCall, same[i]);
  }
};

const nextUncalled = () => {
  if (position === 0) collectUncalled();
  const at = position++;
  if (at >= toCall.length) return false;
  if (uncalled >= maxUncalled) {
    cut |= 8;
    return false;
  }
  const callee = toCall[at];
  if (setHas(calledOnes, callee)) return true;
  setAdd(calledOnes, callee);
  ++uncalled;
  try {
    if (isConstructor(callee)) {
      madeBy(callee);
      return true;
    }
    const result = apply(callee, selfFor(callee), nobodyKnows());
    if (typeof result === 'function' && results.length < maxUncalled) push(results, result);
    if (matches(generator, functionText(callee)) !== null) result.next();  // it does nothing before
  } catch (error) { /* its own fault */ }
  return true;
};

const uncalledPhases = [nextInMemory, nextHolder, nextUncalled];

const beginUncalled = () => {
  byText = {__proto__: null};
  candidates = new NativeWeakSet();
  holders = new NativeWeakMap();
  instances = new NativeWeakMap();
};
