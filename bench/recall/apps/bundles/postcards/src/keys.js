const codes = { 37: 'left', 39: 'right', 13: 'enter', 403: 'red', 404: 'green', 405: 'yellow', 406: 'blue' };
export function register(handlers) {
  document.addEventListener('keydown', ({ keyCode }) => {
    const handler = handlers[codes[keyCode]];
    if (handler) handler();
  });
}
