const compose = (...fns) => (x) => fns.reduceRight((v, f) => f(v), x);
const pipe = (...fns) => (x) => fns.reduce((v, f) => f(v), x);
const curry = (f, n = f.length, got = []) => (...a) => (got.length + a.length >= n ? f(...got, ...a) : curry(f, n, [...got, ...a]));
const tap = (f) => (x) => (f(x), x);
const prop = (k) => (o) => o[k];
const partial = (f, ...a) => (...b) => f(...a, ...b);
const flip = (f) => (a, b) => f(b, a);
const invoker = (n, name) => curry((...a) => a[n][name](...a.slice(0, n)), n + 1);   /* call: IMAGEVIEWER.PinImage, IMAGEVIEWER.FitToWall, KEYBOARD.SetEmojiBar */
const byId = document.getElementById.bind(document);
