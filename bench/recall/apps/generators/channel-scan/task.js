// Runs a generator as a task: what it yields is waited for.
function spawn(generator) {
  const iterator = generator();
  return new Promise((resolve, reject) => {
    function step(method, value) {
      let next;
      try {
        next = iterator[method](value);
      } catch (error) {
        reject(error);
        return;
      }
      if (next.done) {
        resolve(next.value);
      } else {
        Promise.resolve(next.value).then((v) => step('next', v), (e) => step('throw', e));
      }
    }
    step('next');
  });
}

const sleep = (ms) => new Promise((done) => setTimeout(done, ms));

function* range(from, to, step) {
  for (let value = from; value <= to; value += step) yield value;
}

function* map(iterable, f) {
  for (const one of iterable) yield f(one);
}

function* take(iterable, count) {
  for (const one of iterable) {
    if (count-- <= 0) return;
    yield one;
  }
}
