// What a viewer does, to every element of every frame: it is told nothing about the applications.
(async () => {
  const keys = [13, 37, 38, 39, 40, 8, 27, 32, 33, 34, 403, 404, 405, 406, 412, 413, 415, 417, 19, 427, 428, 447, 448,
    449, 457, 461, 10009, ...Array.from({ length: 10 }, (_, digit) => 48 + digit)];
  const pause = (ms) => new Promise((done) => setTimeout(done, ms));
  const windows = (top) => [top, ...Array.from(top.frames).flatMap(windows)];
  const fire = (target, view, kind, name, fields) => {
    const event = new view[kind](name, { bubbles: true, cancelable: true, ...fields });
    for (const [field, value] of Object.entries(fields || {})) {
      Object.defineProperty(event, field, { get: () => value });
    }
    target.dispatchEvent(event);
  };
  for (let round = 0; round < 2; ++round) {
    for (const view of windows(window)) {
      for (const element of view.document.querySelectorAll("*")) {
        for (const name of ["mouseover", "mousedown", "mouseup", "click", "dblclick"]) {
          fire(element, view, "MouseEvent", name);
        }
        for (const name of ["focus", "change", "input", "blur", "error"]) {
          fire(element, view, "Event", name);
        }
      }
      for (const code of keys) {
        for (const name of ["keydown", "keypress", "keyup"]) {
          const focused = view.document.activeElement || view.document.body;
          fire(focused, view, "KeyboardEvent", name, { keyCode: code, which: code });
        }
      }
      for (const name of ["resize", "online", "offline", "hashchange", "visibilitychange", "pagehide"]) {
        fire(view, view, "Event", name);
      }
    }
    await pause(100);
  }
  await pause(150);
})()
