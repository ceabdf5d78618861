const kb = byId('kb'), iv = byId('iv');

invoker(1, 'PinImage')('a.jpg')(iv);   /* also: IMAGEVIEWER.PinImage */
invoker(0, 'FitToWall')(iv);   /* also: IMAGEVIEWER.FitToWall */
invoker(2, 'SetEmojiBar')(1, 2, kb);   /* also: KEYBOARD.SetEmojiBar */

pipe(byId, tap((p) => p.Show()), (p) => p.SetGhostKeys(true))('kb');   /* call: KEYBOARD.SetGhostKeys */
compose((p) => p.SetCaretBlink(0), prop('el'))({ el: kb });   /* call: KEYBOARD.SetCaretBlink */
curry((a, b, p) => p.SetFloatPos(a, b))(1)(2)(kb);   /* call: KEYBOARD.SetFloatPos */
partial((p, n) => p.Posterize(n), iv)(3);   /* call: IMAGEVIEWER.Posterize */
flip((n, p) => p.SetDither(n))(iv, 'ordered');   /* call: IMAGEVIEWER.SetDither */

const on = (p, f) => f.call(p, 1);
on(iv, function (n) { this.SetVignette(n); });   /* call: IMAGEVIEWER.SetVignette */
on(iv, iv.SetTint);   /* call: IMAGEVIEWER.SetTint */
const un = Function.prototype.call.bind(Function.prototype.call);
un(kb.SetLayer, kb, 'fn');   /* call: KEYBOARD.SetLayer */
[[iv, 'a'], [iv, 'b']].map(([p, n]) => p.ThumbnailOf(n));   /* call: IMAGEVIEWER.ThumbnailOf */
const chain = (p) => ({ do: (name, ...a) => (p[name](...a), chain(p)) });   /* call: KEYBOARD.LockShift, KEYBOARD.SetKeyFont */
chain(kb).do('LockShift', true).do('SetKeyFont', 'x');   /* also: KEYBOARD.LockShift, KEYBOARD.SetKeyFont */
[iv.CacheTile.bind(iv, 1), kb.Hide.bind(kb)].forEach((f) => f());   /* call: IMAGEVIEWER.CacheTile */
const once = (f) => { let r; return (...a) => (f ? ((r = f(...a)), (f = null), r) : r); };
once(() => kb.SetPredictor('off'))();   /* call: KEYBOARD.SetPredictor */
invoker(0, 'ClearTiles')({ ClearTiles: () => 0 });   /* decoy */
pipe((o) => o, (o) => o.LockShift())({ LockShift() {} });   /* decoy */
