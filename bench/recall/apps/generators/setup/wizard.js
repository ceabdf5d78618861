// A wizard is a generator: what it yields is a page, what comes back is the choice of the viewer.
const Wizard = (() => {
  let running = null;
  let page = null;

  function show({ title, choices = ['Next'] }) {
    page = { title, choices, at: 0 };
    paint();
  }

  function paint() {
    document.getElementById('step').innerHTML = `<h1>${page.title}</h1>` +
      page.choices.map((choice, i) => `<span class="${i === page.at ? 'on' : ''}">${choice}</span>`).join(' ');
  }

  function advance(answer) {
    if (!running) return;
    const { value, done } = running.next(answer);
    if (done) {
      running = null;
      page = null;
      document.getElementById('step').textContent = 'Ready: ' + value + ' services';
    } else {
      show(value);
    }
  }

  document.addEventListener('keydown', (event) => {
    if (!page) return;
    if (event.keyCode === 37) { page.at = Math.max(0, page.at - 1); paint(); }
    if (event.keyCode === 39) { page.at = Math.min(page.choices.length - 1, page.at + 1); paint(); }
    if (event.keyCode === 13) advance(page.choices[page.at]);
    if (event.keyCode === 27) { running.return(0); running = null; page = null; }
  });

  return {
    start(generator) {
      running = generator;
      advance();
    },
    // For the demo in shops: all choices are the first.
    auto(generator, every = 5) {
      let step = generator.next();
      const timer = setInterval(() => {
        if (step.done) { clearInterval(timer); return; }
        step = generator.next(step.value.choices ? step.value.choices[0] : 'Next');
      }, every);
    }
  };
})();
