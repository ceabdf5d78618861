// The page of a report: sorts, filters and unfolds. Without it everything is shown, unfolded.
'use strict';
(() => {
  const table = document.getElementById('table');
  const search = document.getElementById('search');
  const shown = document.getElementById('shown');
  const unfold = document.getElementById('unfold');
  const choices = [...document.querySelectorAll('.choice')];
  const applications = [...table.tBodies].map((body, index) => ({
    body,
    index,
    toggle: body.querySelector('.toggle'),
    more: body.querySelector('.more'),
    text: body.textContent.toLowerCase(),
  }));

  const setOpen = (application, isOpen) => {
    application.more.hidden = !isOpen;
    application.toggle.setAttribute('aria-expanded', String(isOpen));
  };
  for (const application of applications) {
    setOpen(application, applications.length === 1);
    application.toggle.addEventListener('click', () => setOpen(application, application.more.hidden));
  }

  const visible = () => applications.filter(({body}) => !body.hidden);
  unfold.addEventListener('click', () => {
    const isOpen = visible().some(({more}) => more.hidden);
    visible().forEach((application) => setOpen(application, isOpen));
    unfold.textContent = isOpen ? 'Fold all' : 'Unfold all';
  });

  const filter = () => {
    const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
    const verdicts = choices.filter((choice) => choice.getAttribute('aria-pressed') === 'true')
        .map((choice) => choice.dataset.verdict);
    for (const {body, text} of applications) {
      const isChosen = verdicts.length === 0 || verdicts.includes(body.dataset.verdict);
      body.hidden = !isChosen || !words.every((word) => text.includes(word));
    }
    shown.textContent = `${visible().length} of ${applications.length} shown`;
  };
  search.addEventListener('input', filter);
  for (const choice of choices) {
    choice.addEventListener('click', () => {
      choice.setAttribute('aria-pressed', String(choice.getAttribute('aria-pressed') !== 'true'));
      filter();
    });
  }
  for (const button of document.querySelectorAll('.find')) {
    button.addEventListener('click', () => {
      search.value = search.value === button.dataset.find ? '' : button.dataset.find;
      filter();
      if (search.value !== '') table.scrollIntoView({block: 'nearest'});
    });
  }

  const byName = new Intl.Collator('en', {numeric: true}).compare;
  const sort = (key, direction) => {
    const compare = key === 'name' ?
        (a, b) => byName(a.body.dataset.name, b.body.dataset.name) :
        (a, b) => Number(a.body.dataset[key]) - Number(b.body.dataset[key]);
    const sorted = [...applications].sort((a, b) => direction * compare(a, b) || a.index - b.index);
    table.append(...sorted.map(({body}) => body));
  };
  for (const button of table.querySelectorAll('[data-sort]')) {
    const header = button.parentElement;
    button.addEventListener('click', () => {
      const key = button.dataset.sort;
      // What people look for comes first: names from A, the worst verdict, the greatest number.
      const first = key === 'name' || key === 'rank' ? 'ascending' : 'descending';
      const other = first === 'ascending' ? 'descending' : 'ascending';
      const order = header.getAttribute('aria-sort') === first ? other : first;
      table.querySelectorAll('th[aria-sort]').forEach((cell) => cell.removeAttribute('aria-sort'));
      header.setAttribute('aria-sort', order);
      sort(key, order === 'ascending' ? 1 : -1);
    });
  }

  document.documentElement.classList.add('live');
  filter();
})();
