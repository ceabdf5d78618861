'use strict';
const util = {
  el(tag, attributes = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
      if (name.startsWith('on')) element.addEventListener(name.slice(2), value);
      else element.setAttribute(name, value);
    }
    for (const child of children.flat()) element.append(child);
    return element;
  },
  groupBy(list, key) {
    return list.reduce((groups, item) => {
      (groups[item[key]] ||= []).push(item);
      return groups;
    }, {});
  },
  range: (n) => Array.from({ length: n }, (_, i) => i),
  pluralize: (n, word) => `${n} ${word}${n === 1 ? '' : 's'}`,
  debounce(fn, ms) {
    let timer;
    return (...args) => {
      clearTimeout(timer);
      timer = setTimeout(() => fn(...args), ms);
    };
  },
  /** Deterministic numbers, so that the demonstration is the same everywhere. */
  random(seed) {
    let state = seed;
    return () => {
      state = (state * 1103515245 + 12345) % 2147483648;
      return state / 2147483648;
    };
  },
};
