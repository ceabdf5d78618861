'use strict';
let nextId = 0;
const pending = new Map();

function request(method, parameters) {
  const id = ++nextId;
  parent.postMessage({ id, method, parameters }, '*');
  return new Promise((resolve) => pending.set(id, resolve));
}

addEventListener('message', ({ data }) => {
  if (data && pending.has(data.reply)) {
    pending.get(data.reply)(data.result);
    pending.delete(data.reply);
  }
});
