(() => {
  "use strict";
  const recorder = document.getElementById("recorder");
  const player = document.getElementById("player");
  const history = new History();
  const recordings = [{ id: 11, title: "News" }, { id: 12, title: "Film of the week" }, { id: 15, title: "Match" }];
  let index = 0;

  const current = () => recordings[index];
  const hint = (text) => { document.getElementById("hint").textContent = text; };

  function draw() {
    document.getElementById("list").innerHTML =
      recordings.map((r, i) => `<li${i === index ? ' class="on"' : ""}>${r.title}</li>`).join("");
  }

  const make = {
    protect: () => new Protect(recorder, current().id),
    rename: () => new Rename(recorder, current().id, `${current().title}!`),
    remove: () => new Remove(recorder, current().id),
    cut: () => new Simple(recorder, "CutCommercials", "RestoreCommercials", current().id),      /* call: RECORDER.CutCommercials, RECORDER.RestoreCommercials */
    chapter: () => new Simple(player, "MarkChapter", "UnmarkChapter", player.GetPosition()),    /* call: PLAYER.MarkChapter, PLAYER.UnmarkChapter */
    stop: () => new Simple(player, "Stop"),
    all: () => new Macro(make.protect(), make.cut()),
  };

  function watch() {
    player.Open(`rec://${current().id}`);
    player.Play();
    player.ResumeFromBookmark(current().id);            /* call: PLAYER.ResumeFromBookmark */
    hint(`${recorder.GetFreeTime()} minutes left of ${recorder.GetCapacity()}`);    /* call: RECORDER.GetCapacity */
  }

  const KEYS = { 403: "protect", 404: "rename", 405: "remove", 406: "cut", 457: "chapter", 413: "stop", 48: "all" };

  document.addEventListener("keydown", ({ keyCode }) => {
    const name = KEYS[keyCode];
    if (name) {
      history.perform(make[name]());
      history.MarkChapter(name);                        /* decoy */
    } else if (keyCode === 461 || keyCode === 10009) {
      for (let n = history.done.length; n; n--) history.undo();
    } else if (keyCode === 57) {
      history.redo();
    } else if (keyCode === 38 || keyCode === 40) {
      index = (index + (keyCode === 40 ? 1 : recordings.length - 1)) % recordings.length;
    } else if (keyCode === 13) {
      watch();
    } else if (keyCode === 412) {
      hint("To copy to a disc: recorder.CopyToDisc(id)");     /* decoy */
    }
    draw();
  });
  draw();
})();
