// The page of a report: search, filters, order, decisions.
//
// All data are in the JSON of the page. What the filters choose is a list of rows, an application and its calls; the rows
// stand in blocks of forty, and a block is drawn when it comes near the window and emptied when it is far away. Texts are
// only ever set as texts. The filters stand in the fragment of the address, so that a view, or one finding, can be sent to
// somebody. Decisions are kept in this browser.
'use strict';
(() => {
  const {applications, run} = JSON.parse(document.getElementById('data').textContent);
  const byId = (id) => document.getElementById(id);
  const verdicts = ['findings', 'failed', 'incomplete', 'clean'];
  const labels = {clean: 'clean', incomplete: 'incomplete', findings: 'findings', failed: 'could not check'};
  const counted = (count, one, several) => `${count} ${count === 1 ? one : several}`;
  const byName = new Intl.Collator('en', {numeric: true}).compare;

  // ---- elements ----------------------------------------------------------------------------------------------------

  // make('p', 'facts', child, ...): a child is an element or a text.
  const make = (name, classes, ...children) => {
    const element = document.createElement(name);
    if (classes) element.className = classes;
    element.append(...children);
    return element;
  };
  // A text of an application between its neighbours, whatever its direction of writing.
  const isolated = (text) => make('bdi', '', text);
  const button = (classes, action, ...children) => {
    const element = make('button', classes, ...children);
    element.type = 'button';
    element.addEventListener('click', action);
    return element;
  };
  const definitions = (pairs) => pairs.flatMap(([name, value]) => [make('dt', '', name), make('dd', '', isolated(value))]);
  const drawBar = (svg, width, parts) => {
    svg.setAttribute('viewBox', `0 0 ${Math.max(width, 1)} 1`);
    let x = 0;
    for (const [classes, count] of parts) {
      const rect = document.createElementNS(svg.namespaceURI, 'rect');
      rect.setAttribute('class', classes);
      rect.setAttribute('x', String(x));
      rect.setAttribute('width', String(count));
      rect.setAttribute('height', '1');
      svg.append(rect);
      x += count;
    }
  };

  // ---- what is searched --------------------------------------------------------------------------------------------

  const calls = [];
  applications.forEach((application, index) => {
    application.index = index;
    application.uses = application.calls.filter(({state}) => state === 'reported').length;
    application.text = [application.name, application.says, ...application.notChecked.flat()].join('\n').toLowerCase();
    const alike = new Map();
    for (const call of application.calls) {
      call.application = application;
      call.where = call.place === '' ? call.path : `${call.path}:${call.place}`;
      call.message = call.message || `undocumented API '${call.method}' on ${call.plugin}`;
      // Findings have an identity of their own; other calls are numbered by what they are.
      const identity = call.id || `${call.where} ${call.message}`;
      const before = alike.get(identity) || 0;
      alike.set(identity, before + 1);
      call.key = `${application.name}\n${identity}${before === 0 ? '' : '#' + before}`;
      calls.push(call);
    }
  });
  // What is searched of a call is put together when it is first needed, or when the browser has time.
  const textOf = (call) => {
    if (call.text === undefined) {
      const [lead, called, rest] = call.line;
      call.text = `${call.application.name}\n${call.where}\n${call.message}\n${call.remarks}\n${lead}${called}${rest}`.toLowerCase();
    }
    return call.text;
  };
  const prepare = (first) => requestIdleCallback((deadline) => {
    let i = first;
    while (i < calls.length && deadline.timeRemaining() > 1) textOf(calls[i++]);
    if (i < calls.length) prepare(i);
  });

  // ---- decisions ---------------------------------------------------------------------------------------------------

  const kStore = 'tarvo-check decisions';
  const readDecisions = () => {
    try {
      return new Map(Object.entries(JSON.parse(localStorage.getItem(kStore)) || {}));
    } catch {
      return new Map();  // nothing is kept, or nothing may be
    }
  };
  const decisions = readDecisions();
  const decisionOn = (key) => decisions.get(key) || {decision: '', note: ''};
  const decide = (key, change) => {
    const item = {...decisionOn(key), ...change};
    if (item.decision || item.note) {
      decisions.set(key, item);
    } else {
      decisions.delete(key);
    }
    try {
      localStorage.setItem(kStore, JSON.stringify(Object.fromEntries(decisions)));
    } catch {
      // They last as long as the page.
    }
    showDecided();
  };
  const showDecided = () => {
    const count = (wanted) => decisions.size === 0 ? 0 : [...applications.map(({name}) => name), ...calls.map(({key}) => key)]
        .filter((key) => decisionOn(key).decision === wanted).length;
    byId('decided').textContent = `${count('accept')} accepted, ${count('reject')} rejected, ${count('ask')} to ask`;
  };

  // The decision of a call; where it has none, that of its application.
  const effective = (call) => {
    const own = decisionOn(call.key);
    return own.decision ? own : decisionOn(call.application.name);
  };
  const quoted = (text) => JSON.stringify(text).replace(/\x7f/g, '\\u007f');
  const glob = (text) => text.replace(/[*?[\]\\]/g, '\\$&');
  // Without a slash, a glob stands for files of that name in any folder.
  const rooted = (path) => glob(path.includes('/') ? path : `/${path}`);
  const exceptions = () => calls.filter((call) => call.id && effective(call).decision === 'accept')
      .map((call) => ['[[accept]]', `method = ${quoted(call.method)}`, `plugin = ${quoted(call.plugin)}`,
        `application = ${quoted(glob(call.application.name))}`, `file = ${quoted(rooted(call.path))}`,
        `reason = ${quoted(effective(call).note)}`, ''].join('\n'));
  const asToml = () => ['# Accepted by a reviewer of a report of tarvo-check.', '', ...new Set(exceptions())].join('\n');
  const asJson = () => JSON.stringify({
    applications: applications.filter(({name}) => decisions.has(name)).map(({name}) => ({application: name, ...decisionOn(name)})),
    calls: calls.filter(({key}) => decisions.has(key)).map((call) => ({application: call.application.name,
      fingerprint: call.id || '', method: call.method, plugin: call.plugin, place: call.where, ...decisionOn(call.key)})),
  }, null, 2) + '\n';
  const save = (name, type, text) => {
    const link = document.createElement('a');
    link.href = URL.createObjectURL(new Blob([text], {type}));
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 1000);
  };

  // ---- filters -----------------------------------------------------------------------------------------------------

  const options = {
    method: [['', 'all'], ...[...new Set(calls.map(({method}) => method))].filter(Boolean).sort(byName).map((name) => [name, name])],
    plugin: [['', 'all'], ...[...new Set(calls.map(({plugin}) => plugin))].filter(Boolean).sort(byName).map((name) => [name, name])],
    confidence: [['', 'any'], ['confirmed', 'confirmed'], ['certain', 'certain'], ['likely', 'likely'], ['possible', 'possible']],
    device: [['', 'any'], ['yes', 'the device reports it'], ['no', 'the device does not']],
    state: [['', 'any'], ['reported', 'new'], ['known', 'in the baseline'], ['accepted', 'accepted'], ['noted', 'noted'],
      ['undetermined', 'undetermined']],
    decision: [['', 'any'], ['none', 'open'], ['accept', 'accept'], ['reject', 'reject'], ['ask', 'ask']],
    order: [['', 'worst first'], ['uses', 'most uses'], ['name', 'name'], ['missed', 'most not checked'], ['seconds', 'slowest']],
  };
  const filter = {words: '', verdict: new Set(), at: ''};
  for (const [name, values] of Object.entries(options)) {
    filter[name] = '';
    byId(name).append(...values.map(([value, label]) => {
      const option = make('option', '', label);
      option.value = value;
      return option;
    }));
  }

  const readAddress = () => {
    const address = new URLSearchParams(location.hash.slice(1));
    filter.words = address.get('search') || '';
    filter.at = address.get('at') || '';
    filter.verdict = new Set((address.get('verdict') || '').split(',').filter((name) => verdicts.includes(name)));
    for (const [name, values] of Object.entries(options)) {
      const value = address.get(name) || '';
      filter[name] = values.some(([known]) => known === value) ? value : '';
    }
  };
  const writeAddress = () => {
    const address = new URLSearchParams();
    if (filter.words) address.set('search', filter.words);
    if (filter.verdict.size > 0) address.set('verdict', [...filter.verdict].join(','));
    for (const name of Object.keys(options)) {
      if (filter[name]) address.set(name, filter[name]);
    }
    if (filter.at) address.set('at', filter.at);
    history.replaceState(null, '', `#${address}`);
  };
  const showFilter = () => {
    byId('search').value = filter.words;
    for (const name of Object.keys(options)) byId(name).value = filter[name];
    for (const choice of byId('verdicts').children)
      choice.setAttribute('aria-pressed', String(filter.verdict.has(choice.dataset.verdict)));
    for (const method of byId('methods').querySelectorAll('.find'))
      method.setAttribute('aria-pressed', String(filter.method !== '' && method.dataset.find === filter.method));
  };

  const isChosen = (call) =>
    (!filter.method || call.method === filter.method) && (!filter.plugin || call.plugin === filter.plugin) &&
    (!filter.confidence || call.confidence === filter.confidence) &&
    (!filter.device || (call.device === true) === (filter.device === 'yes')) &&
    (!filter.state || call.state === filter.state) &&
    (!filter.decision || (effective(call).decision || 'none') === filter.decision);
  const choosesCalls = () => ['method', 'plugin', 'confidence', 'device', 'state', 'decision'].some((name) => filter[name]);

  // The applications that are shown, each with its calls that are.
  const chosen = () => {
    const words = filter.words.toLowerCase().split(/\s+/).filter(Boolean);
    const hasWords = (text) => words.every((word) => text.includes(word));
    return applications.filter(({verdict}) => filter.verdict.size === 0 || filter.verdict.has(verdict)).map((application) => {
      const named = words.length === 0 || hasWords(application.text);
      const shown = application.calls.filter((call) => isChosen(call) && (named || hasWords(textOf(call))));
      const isOpenApplication = filter.decision && (decisionOn(application.name).decision || 'none') === filter.decision;
      const isShown = shown.length > 0 || (named && (!choosesCalls() || Boolean(isOpenApplication)));
      return {application, shown, isShown};
    }).filter(({isShown}) => isShown);
  };

  const orders = {
    '': (a, b) => verdicts.indexOf(a.verdict) - verdicts.indexOf(b.verdict) || b.uses - a.uses || byName(a.name, b.name),
    'uses': (a, b) => b.uses - a.uses,
    'name': (a, b) => byName(a.name, b.name),
    'missed': (a, b) => b.missed - a.missed,
    'seconds': (a, b) => b.seconds - a.seconds,
  };

  // ---- rows --------------------------------------------------------------------------------------------------------

  const lineOf = (number, classes, ...content) =>
    make('span', classes, make('span', 'number', number > 0 ? String(number) : ''), make('code', '', ...content), '\n');
  const cut = () => make('span', 'cut', '…');
  const plainLine = ([number, text, isCut]) => lineOf(number, 'line', text, ...(isCut ? [cut()] : []));
  const sourceOf = ({before, line: [lead, called, rest, isCutBefore, isCutBehind], number, after}) => make('pre', '',
      ...before.map(plainLine),
      lineOf(number, 'line called', ...(isCutBefore ? [cut()] : []), lead, make('mark', '', called), rest,
          ...(isCutBehind ? [cut()] : [])),
      ...after.map(plainLine));

  const traceOf = (trace) => make('ol', 'trace', ...trace.map(({text, where, source}) => make('li', '', isolated(text), ' ',
      make('span', 'where', isolated(where)), ...(source ? [make('code', 'source', source)] : []))));

  const decisionOf = (key, what) => {
    const {decision, note} = decisionOn(key);
    const group = make('div', 'decision');
    group.setAttribute('role', 'group');
    group.setAttribute('aria-label', `Decision on ${what}`);
    for (const [value, label] of [['accept', 'Accept'], ['reject', 'Reject'], ['ask', 'Ask']]) {
      const choice = button(`decide ${value}`, () => {
        decide(key, {decision: decisionOn(key).decision === value ? '' : value});
        for (const each of group.querySelectorAll('.decide'))
          each.setAttribute('aria-pressed', String(each.dataset.value === decisionOn(key).decision));
      }, label);
      choice.dataset.value = value;
      choice.setAttribute('aria-pressed', String(decision === value));
      group.append(choice);
    }
    const field = document.createElement('input');
    field.value = note;
    field.placeholder = 'note: reason, question';
    field.setAttribute('aria-label', `Note on ${what}`);
    field.addEventListener('input', () => decide(key, {note: field.value}));
    group.append(field);
    return group;
  };

  const open = new Map();  // rows that were folded or unfolded by hand
  const isOpen = (row) => open.has(row.key) ? open.get(row.key) : row.isOpen;

  const drawApplication = (row) => {
    const {application, shown} = row;
    const state = isOpen(row);
    const toggle = button('toggle', () => {
      open.set(row.key, !state);
      draw({keep: row.key});
    }, isolated(application.name));
    toggle.setAttribute('aria-expanded', String(state));
    const uses = application.uses === 0 ? '' : counted(application.uses, 'use', 'uses');
    const missed = application.missed === 0 ? '' : `${application.missed} not checked`;
    const element = make('div', 'application', make('h3', '', toggle),
        make('span', `verdict ${application.verdict}`, labels[application.verdict]),
        make('span', 'counts', [uses, missed, `${application.seconds.toFixed(2)} s`].filter(Boolean).join(' · ')));
    if (!state) return element;
    const more = make('div', 'more', make('p', `says ${application.verdict}`, application.says),
        decisionOf(application.name, application.name));
    if (application.notChecked.length > 0) {
      more.append(make('h4', '', 'Not checked'), make('dl', '', ...definitions(application.notChecked)));
      if (application.restNotChecked) more.append(make('p', 'facts', application.restNotChecked));
    }
    const folded = (title, classes, ...content) => make('details', classes, make('summary', '', title), ...content);
    if (application.facts.length > 0) more.append(folded('Evidence', 'plain', make('dl', '', ...definitions(application.facts))));
    if (application.plugins.length > 0) {
      const head = make('tr', '', ...['Kind', 'Plug-in', 'Name', 'File'].map((name) => make('th', '', name)));
      const rows = application.plugins.map(([kind, ...rest]) =>
        make('tr', '', make('td', '', kind), ...rest.map((text) => make('td', '', isolated(text)))));
      const wide = make('div', 'wide', make('table', '', make('thead', '', head), make('tbody', '', ...rows)));
      wide.tabIndex = 0;
      more.append(folded(`Plug-ins: ${counted(rows.length, 'element or variable', 'elements and variables')}`, 'plain', wide));
    }
    if (shown.length < application.calls.length)
      more.append(make('p', 'facts', `${shown.length} of ${counted(application.calls.length, 'call', 'calls')} shown`));
    element.append(more);
    return element;
  };

  const addressOf = (call) => `#${new URLSearchParams({at: call.key})}`;

  const drawCall = (row) => {
    const {call} = row;
    const state = isOpen(row);
    const isNamed = call.state !== 'undetermined' && call.method;
    const toggle = button('toggle', () => {
      open.set(row.key, !state);
      draw({keep: row.key});
    }, make('span', 'method', isolated(isNamed ? call.method : call.line[1])), ' ', make('span', 'on', 'on ', isolated(call.plugin)));
    toggle.setAttribute('aria-expanded', String(state));
    const element = make('div', `call ${call.state}`, toggle,
        make('span', 'where', isolated(call.where), ' · ', make('span', 'remarks', call.remarks)));
    if (call.key === filter.at) element.classList.add('sent');
    if (!state) return element;
    const link = make('a', '', 'Link to this finding');
    link.href = addressOf(call);
    const more = make('div', 'more', make('p', 'message', call.message), sourceOf(call));
    if (call.trace) more.append(make('h4', '', 'The way to this call'), traceOf(call.trace));
    if (call.terms && call.terms.length > 0) more.append(make('ul', 'terms', ...call.terms.map((term) => make('li', '', run.terms[term]))));
    more.append(decisionOf(call.key, `${call.method || 'the call'} in ${call.where}`), make('p', 'facts', link));
    element.append(more);
    return element;
  };

  const drawRow = (row) => {
    const element = row.call ? drawCall(row) : drawApplication(row);
    element.setAttribute('role', 'listitem');
    element.dataset.key = row.key;
    return element;
  };

  // ---- blocks of rows ----------------------------------------------------------------------------------------------

  const kRows = 40;
  const kApplicationHeight = 46;
  const kCallHeight = 60;
  const list = byId('list');
  let rows = [];

  const fill = (block) => {
    if (block.childElementCount > 0) return;
    block.append(...rows.slice(block.first, block.first + kRows).map(drawRow));
    block.style.height = '';
  };
  const empty = (block) => {
    if (block.childElementCount === 0 || block.contains(document.activeElement)) return;
    block.style.height = `${block.getBoundingClientRect().height}px`;
    block.replaceChildren();
  };
  const observer = new IntersectionObserver((entries) => {
    for (const {target, isIntersecting} of entries) {
      if (isIntersecting) {
        fill(target);
      } else {
        empty(target);
      }
    }
  }, {rootMargin: '800px'});

  const fewCalls = 3;  // of an application that is alone, unfolded at once
  const rowsOf = (groups) => groups.flatMap(({application, shown}) => {
    const isSought = filter.words !== '' || choosesCalls();
    const row = {key: application.name, application, shown,
      isOpen: applications.length === 1 || isSought || shown.some(({key}) => key === filter.at)};
    if (!isOpen(row)) return [row];
    return [row, ...shown.map((call, i) => ({key: call.key, call,
      isOpen: call.key === filter.at || (applications.length === 1 && i < fewCalls)}))];
  });

  // Draws what the filters choose. `keep`: the row that stays where it is in the window, and keeps the focus.
  const draw = ({keep = ''} = {}) => {
    const find = () => [...list.querySelectorAll('[data-key]')].find(({dataset}) => dataset.key === keep);
    const before = keep && find() ? find().getBoundingClientRect().top : 0;
    const groups = chosen().sort((a, b) => orders[filter.order](a.application, b.application) ||
        a.application.index - b.application.index);
    rows = rowsOf(groups);
    observer.disconnect();
    const blocks = [];
    for (let first = 0; first < rows.length; first += kRows) {
      const block = make('div', 'block');
      block.first = first;
      const height = rows.slice(first, first + kRows).reduce((sum, row) => sum + (row.call ? kCallHeight : kApplicationHeight), 0);
      block.style.height = `${height}px`;
      blocks.push(block);
    }
    list.replaceChildren(...blocks);
    const index = rows.findIndex(({key}) => key === keep);
    fill(blocks[0] || make('div'));
    if (index >= 0) {
      const block = Math.floor(index / kRows);
      for (const near of blocks.slice(Math.max(block - 1, 0), block + 2)) fill(near);
      window.scrollBy(0, find().getBoundingClientRect().top - before);
      find().querySelector('.toggle').focus({preventScroll: true});
    }
    for (const block of blocks) observer.observe(block);
    const shown = groups.reduce((sum, group) => sum + group.shown.length, 0);
    byId('shown').textContent = `${groups.length} of ${counted(applications.length, 'application', 'applications')}, ` +
        `${shown} of ${counted(calls.length, 'call', 'calls')} shown`;
    const foldable = rows.filter(({application}) => application);
    byId('unfold').textContent = foldable.some((row) => !isOpen(row)) ? 'Unfold all' : 'Fold all';
  };
  const refresh = () => {
    filter.at = '';
    open.clear();
    writeAddress();
    showFilter();
    draw();
  };
  // The finding that the address names.
  const goThere = () => {
    const index = rows.findIndex(({key}) => key === filter.at);
    if (filter.at === '' || index < 0) return;
    const block = list.children[Math.floor(index / kRows)];
    fill(block);
    block.children[index % kRows].scrollIntoView({block: 'center'});
    block.children[index % kRows].querySelector('.toggle').focus({preventScroll: true});
  };

  // ---- what stands above the list ----------------------------------------------------------------------------------

  document.title = `API check: ${counted(run.uses, 'use', 'uses')} of undocumented APIs`;
  byId('summary').textContent = run.summary;
  byId('facts').textContent = run.facts.slice(0, 2).map(([, value]) => value).join(', engine ') +
      `, ${run.seconds.toFixed(2)} seconds of checking`;
  byId('interrupted').hidden = !run.interrupted;
  byId('evidence').append(...definitions(run.facts));

  const counts = verdicts.map((verdict) => [verdict, applications.filter((each) => each.verdict === verdict).length])
      .filter(([, count]) => count > 0);
  drawBar(byId('bar'), applications.length, counts);
  byId('bar').setAttribute('aria-label', counts.map(([verdict, count]) => `${count} ${labels[verdict]}`).join(', ') || 'none');
  byId('verdicts').append(...counts.map(([verdict, count]) => {
    const choice = button(`choice ${verdict}`, () => {
      if (!filter.verdict.delete(verdict)) filter.verdict.add(verdict);
      refresh();
    }, make('b', '', String(count)), ` ${labels[verdict]}`);
    choice.dataset.verdict = verdict;
    return choice;
  }));

  const countState = (state, deprecated = false) =>
    calls.filter((call) => call.state === state && Boolean(call.deprecated) === deprecated).length;
  const missed = applications.reduce((sum, application) => sum + application.missed, 0);
  const methods = new Map();  // undocumented ones
  for (const call of calls.filter(({state, deprecated}) => state === 'reported' && !deprecated)) {
    const item = methods.get(call.method) || {applications: new Set(), plugins: new Set(), uses: 0};
    item.applications.add(call.application.index);
    item.plugins.add(call.plugin);
    item.uses += 1;
    methods.set(call.method, item);
  }
  for (const [count, one, several, isAlwaysShown] of [
    [countState('reported'), 'undocumented use', 'undocumented uses', true],
    [methods.size, 'undocumented method', 'undocumented methods', true],
    [countState('reported', true) + countState('noted', true), 'deprecated use', 'deprecated uses'],
    [countState('accepted') + countState('accepted', true), 'accepted use', 'accepted uses'],
    [countState('known') + countState('known', true), 'use in the baseline', 'uses in the baseline'],
    [countState('noted'), 'noted call', 'noted calls'],
    [countState('undetermined'), 'undetermined call', 'undetermined calls'],
    [missed, 'part not checked', 'parts not checked', true],
  ]) {
    if (count > 0 || isAlwaysShown)
      byId('figures').append(make('li', '', make('b', '', String(count)), ` ${count === 1 ? one : several}`));
  }

  const ranked = [...methods].sort(([a, first], [b, second]) =>
    second.applications.size - first.applications.size || second.uses - first.uses || byName(a, b));
  const most = ranked.length === 0 ? 1 : ranked[0][1].applications.size;
  for (const [method, {applications: callers, plugins, uses}] of ranked) {
    const find = button('find', () => {
      filter.method = filter.method === method ? '' : method;
      refresh();
      if (filter.method) list.scrollIntoView({block: 'nearest'});
    }, method === '' ? '(no name)' : isolated(method));
    find.dataset.find = method;
    find.setAttribute('aria-pressed', 'false');
    const bar = document.createElementNS('http://www.w3.org/2000/svg', 'svg');
    bar.setAttribute('preserveAspectRatio', 'none');
    bar.setAttribute('aria-hidden', 'true');
    drawBar(bar, most, [['findings', callers.size]]);
    const item = make('div', 'item', find, bar,
        make('b', '', counted(callers.size, 'application', 'applications')),
        make('span', 'facts', `${counted(uses, 'use', 'uses')} on `, isolated([...plugins].sort(byName).join(', '))));
    item.setAttribute('role', 'listitem');
    byId('methods').append(item);
  }
  if (ranked.length === 0) byId('methods').closest('section').hidden = true;

  // ---- events ------------------------------------------------------------------------------------------------------

  byId('search').addEventListener('input', () => {
    filter.words = byId('search').value;
    refresh();
  });
  for (const name of Object.keys(options)) {
    byId(name).addEventListener('change', () => {
      filter[name] = byId(name).value;
      refresh();
    });
  }
  byId('unfold').addEventListener('click', () => {
    const foldable = rows.filter(({application}) => application);
    const state = foldable.some((row) => !isOpen(row));
    for (const row of foldable) open.set(row.key, state);
    draw();
  });
  byId('reset').addEventListener('click', () => {
    history.replaceState(null, '', '#');
    readAddress();
    refresh();
  });
  byId('toml').addEventListener('click', () => save('accepted.toml', 'application/toml', asToml()));
  byId('json').addEventListener('click', () => save('decisions.json', 'application/json', asJson()));
  document.addEventListener('keydown', (event) => {
    if (event.key !== '/' || event.ctrlKey || event.metaKey || event.target.matches('input, select')) return;
    event.preventDefault();
    byId('search').focus();
  });
  const followAddress = () => {
    readAddress();
    showFilter();
    draw();
    goThere();
  };
  window.addEventListener('hashchange', followAddress);
  // On paper everything that is chosen is drawn, unfolded.
  let onScreen = null;
  window.addEventListener('beforeprint', () => {
    onScreen = new Map(open);
    byId('evidence').parentElement.open = true;
    for (const {application, shown} of chosen()) {
      open.set(application.name, true);
      for (const call of shown) open.set(call.key, true);
    }
    draw();
    observer.disconnect();
    for (const block of list.children) fill(block);
  });
  window.addEventListener('afterprint', () => {
    open.clear();
    for (const [key, state] of onScreen || []) open.set(key, state);
    draw();
  });

  showDecided();
  followAddress();
  prepare(0);
})();
