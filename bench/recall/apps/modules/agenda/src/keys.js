const handlers = new Map();
export const keys = {
  on: (code, handler) => handlers.set(code, handler)
};
document.addEventListener('keydown', (event) => {
  const handler = handlers.get(event.keyCode);
  if (handler) handler(event);
});
