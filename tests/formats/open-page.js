// open-page.js PAGE LARGE_PAGE DIRECTORY: uses the page of a report as people do; screenshots go to DIRECTORY. LARGE_PAGE is
// of a thousand applications with twenty thousand findings.
'use strict';
const assert = require('assert');
const fs = require('fs');
const path = require('path');
const {pathToFileURL} = require('url');
const puppeteer = require('puppeteer-core');

const [file, largeFile, directory] = process.argv.slice(2);
const axe = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf-8');
const hostileName = '<script>alert(1)</script>';
const complaints = [];

const views = [
  {name: 'light', width: 1280, height: 900, scheme: 'light'},
  {name: 'dark', width: 1280, height: 900, scheme: 'dark'},
  {name: 'phone', width: 390, height: 844, scheme: 'light'},
  {name: 'phone-dark', width: 390, height: 844, scheme: 'dark'},
];

const open = async (browser, {width, height, scheme}, url = pathToFileURL(file).href) => {
  const page = await browser.newPage();
  page.on('console', (message) => complaints.push(`console: ${message.text()}`));
  page.on('pageerror', (error) => complaints.push(`error: ${error.message}`));
  page.on('dialog', (dialog) => (complaints.push(`dialog: ${dialog.message()}`), dialog.dismiss()));
  page.on('request', (request) => {
    if (!/^(file|blob):/.test(request.url()) || !request.isNavigationRequest()) complaints.push(`request: ${request.url()}`);
  });
  await page.setViewport({width, height});
  await page.emulateMediaFeatures([{name: 'prefers-color-scheme', value: scheme}]);
  await page.goto(url);
  return page;
};

const texts = (page, selector) => page.$$eval(selector, (all) => all.map((each) => each.textContent));
const names = (page) => texts(page, '.application .toggle');
const shown = (page) => page.$eval('#shown', (status) => status.textContent);
const choose = (page, name, value) => page.select(`#${name}`, value);
const type = async (page, text) => {
  await page.$eval('#search', (field) => field.select());
  await page.keyboard.press('Backspace');
  await page.type('#search', text);
};
const reset = (page) => page.click('#reset');
const isFalling = (list) => list.every((value, i) => i === 0 || list[i - 1] >= value);

const ordersAndFilters = async (page) => {
  const all = await shown(page);
  const worstFirst = await texts(page, '.application .verdict');
  assert.deepStrictEqual([...new Set(worstFirst)], ['findings', 'could not check', 'incomplete', 'clean']);
  await choose(page, 'order', 'uses');
  assert(isFalling((await texts(page, '.application .counts')).map((text) => parseInt((text.match(/(\d+) uses?/) || [0, 0])[1]))));
  await choose(page, 'order', 'name');
  const sorted = await names(page);
  assert(sorted.indexOf('catalogue-2') < sorted.indexOf('catalogue-10'));
  await reset(page);

  await type(page, 'alert(1)</SCRIPT>');
  assert.deepStrictEqual(await names(page), [hostileName]);
  await type(page, 'no such thing');
  assert.deepStrictEqual(await names(page), []);
  assert.match(await shown(page), /^0 of /);
  await reset(page);
  assert.strictEqual(await shown(page), all);

  await page.click('.choice.failed');
  assert.deepStrictEqual(await names(page), ['missing.wgt']);
  await page.click('.choice.incomplete');
  assert.deepStrictEqual(await names(page), ['missing.wgt', 'damaged.swf']);
  assert.match(page.url(), /#verdict=failed%2Cincomplete$/);
  await reset(page);

  // Methods stand by the number of applications; a button shows their calls only.
  assert(isFalling((await texts(page, '#methods b')).map(parseFloat)));
  const [method] = await texts(page, '.find');
  await page.click('.find');
  const methods = await texts(page, '.call .method');
  assert(methods.length > 0 && methods.every((name) => name === method));
  await page.click('.find');
  for (const [name, value] of [['state', 'undetermined'], ['device', 'no'], ['confidence', 'certain'], ['plugin', 'MORVANE-NAVERTIX-TUNER']]) {
    await choose(page, name, value);
    assert.notStrictEqual(await shown(page), all, `${name} ${value}`);
    assert(page.url().includes(`${name}=${value}`));
    await reset(page);
  }
};

// What was filtered stands in the address, and a finding can be sent to somebody.
const addresses = async (browser, page) => {
  await type(page, 'minified');
  assert.match(page.url(), /#search=minified$/);
  const again = await open(browser, views[0], page.url());
  assert.deepStrictEqual(await names(again), ['minified']);
  await again.close();
  await page.bringToFront();  // in the background nothing is drawn
  await page.click('.call .toggle');
  const link = await page.$eval('.call .more a', (each) => each.href);
  const sent = await open(browser, views[0], link);
  assert.strictEqual(await sent.$eval('.sent mark', (mark) => mark.textContent), 'tv.Tune(9)');
  assert.strictEqual(await sent.evaluate(() => document.activeElement.closest('.sent') !== null), true);
  await sent.close();
  await page.bringToFront();
  await reset(page);
};

const unfoldsByKeyboard = async (page) => {
  await type(page, 'minified');
  await page.focus('#unfold');
  const isOn = (selector) => page.evaluate((selector) => document.activeElement.matches(selector), selector);
  for (let i = 0; i < 20 && !await isOn('.call .toggle'); ++i) await page.keyboard.press('Tab');
  const state = () => page.evaluate(() => document.activeElement.getAttribute('aria-expanded'));
  assert.strictEqual(await state(), 'false');
  await page.keyboard.press('Enter');
  assert.strictEqual(await state(), 'true');
  assert.strictEqual(await page.$eval('.call mark', (mark) => mark.textContent), 'tv.Tune(9)');
  assert.strictEqual(await page.$eval('.called .number', (number) => number.textContent), '1');
  await page.keyboard.press('Enter');
  assert.strictEqual(await state(), 'false');
  await reset(page);
  await page.focus('#unfold');
  await page.keyboard.press('/');
  assert.strictEqual(await page.evaluate(() => document.activeElement.id), 'search');
};

const decides = async (browser, page) => {
  await page.evaluate(() => {
    window.saved = [];
    URL.createObjectURL = (blob) => (window.saved.push(blob), '#');
    HTMLAnchorElement.prototype.click = () => {};
  });
  await type(page, 'minified');
  await page.click('.call .toggle');
  await page.click('.call .decide.accept');
  await page.type('.call .decision input', 'agreed "here"');
  await page.click('#toml');
  await page.click('#json');
  const [toml, json] = await page.evaluate(() => Promise.all(window.saved.map((blob) => blob.text())));
  assert.strictEqual(toml, ['# Accepted by a reviewer of a report of tarvo-check.', '', '[[accept]]', 'method = "Tune"',
    'plugin = "MORVANE-NAVERTIX-TUNER"', 'application = "minified"', 'file = "/all.min.js"', 'reason = "agreed \\"here\\""', ''].join('\n'));
  const [decision] = JSON.parse(json).calls;
  assert.deepStrictEqual([decision.method, decision.decision, decision.note], ['Tune', 'accept', 'agreed "here"']);
  const again = await open(browser, views[0]);
  assert.match(await again.$eval('#decided', (each) => each.textContent), /^1 accepted, 0 rejected/);
  await again.close();
  await page.bringToFront();
  await page.click('.call .decide.accept');
  assert.match(await page.$eval('#decided', (each) => each.textContent), /^0 accepted/);
  await page.evaluate(() => localStorage.clear());
  await page.reload();
  await reset(page);
};

const showsHostileTexts = async (page) => {
  assert((await names(page)).includes(hostileName));
  assert((await names(page)).includes('\\u202egpj.\\xff\\x1b[31m\\x0a'));
  await type(page, hostileName);
  while (await page.$('.call .toggle[aria-expanded=false]')) await page.click('.call .toggle[aria-expanded=false]');
  const foreign = await page.evaluate(() => ({
    scripts: document.scripts.length,
    images: document.images.length,
    links: [...document.links].map((link) => link.getAttribute('href')).every((href) => href.startsWith('#')),
    attributes: [...document.querySelectorAll('*')].some((each) => each.getAttributeNames().some((name) => name.startsWith('on'))),
    lines: [...document.querySelectorAll('.line code')].map((line) => line.textContent),
  }));
  assert.deepStrictEqual([foreign.scripts, foreign.images, foreign.links, foreign.attributes], [2, 0, true, false]);
  assert(foreign.lines.includes('\ttv.GetSerial("</script><script>x=1");'));
  assert(foreign.lines.includes('\ttv.Run(1); tv.Open("\\xff{0}[x]&amp;");'));
  await reset(page);
};

// A thousand applications with twenty thousand findings: how long it takes to open them and to answer what is typed (the
// best of several tries; a second and 100 ms are the aim on an idle machine), that few of them are drawn at a time, and that
// what is filtered is printed, all of it.
const isQuick = async (browser) => {
  const page = await open(browser, views[0], 'about:blank');
  const opened = [];
  const answers = [];
  for (let i = 0; i < 4; ++i) {
    await page.goto('about:blank');
    const start = Date.now();
    await page.goto(pathToFileURL(largeFile).href);
    await page.waitForSelector('.application');
    opened.push(Date.now() - start);
    assert.match(await shown(page), /^1000 of 1000 applications, 20000 of 20000 calls shown$/);
    answers.push(await page.evaluate(async () => {
      const search = document.getElementById('search');
      const times = [];
      for (const text of ['M', 'Me', 'Method', 'Method7', 'Method7 app-77', 'Method7 app-7', '']) {
        const start = performance.now();
        search.value = text;
        search.dispatchEvent(new Event('input'));
        await new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
        times.push(Math.round(performance.now() - start));
      }
      return times;
    }));
  }
  const best = answers[0].map((_, text) => Math.min(...answers.map((times) => times[text])));
  console.log(`browser: large: open in ${Math.min(...opened)} ms, answers in ${best.join(', ')} ms`);
  // Scrolled to the end, what is far away is not drawn any more.
  await page.click('#unfold');
  for (let i = 0; i < 30; ++i) {
    await page.evaluate(() => window.scrollTo(0, document.body.scrollHeight));
    await page.evaluate(() => new Promise((done) => setTimeout(done, 20)));
  }
  const keys = await page.$$eval('[data-key]', (all) => all.map((each) => each.querySelector('.toggle').textContent));
  assert(keys.length < 1000, `${keys.length} rows are drawn`);
  await reset(page);
  await type(page, 'app-123');
  await page.evaluate(() => window.dispatchEvent(new Event('beforeprint')));
  assert.strictEqual((await page.$$('.call pre')).length, 20);
  await page.evaluate(() => window.dispatchEvent(new Event('afterprint')));
  assert.strictEqual((await page.$$('.call pre')).length, 0);
  await reset(page);
  await page.screenshot({path: path.join(directory, 'large.png')});
  await page.close();
};

// Whatever slipped in would not run.
const keepsItsPolicy = async (page) => {
  const before = complaints.length;
  const ran = await page.evaluate(() => {
    const script = document.createElement('script');
    script.textContent = 'window.ran = true';
    document.body.append(script);
    return window.ran === true;
  });
  assert.strictEqual(ran, false);
  assert(complaints.splice(before).every((text) => text.includes('Content Security Policy')));
};

const isAccessible = async (page, view) => {
  await page.evaluate(axe);
  const {violations, passes} = await page.evaluate(() => axe.run());
  assert(passes.some(({id}) => id === 'color-contrast'));
  const told = violations.map(({id, nodes}) => `${view}: ${id}: ${nodes[0].html} ${nodes[0].failureSummary}`);
  assert.deepStrictEqual(told, []);
};

(async () => {
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    protocolTimeout: 60000,
    args: ['--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage'],
  });
  try {
    for (const view of views) {
      const page = await open(browser, view);
      const shoot = (name, fullPage) => page.screenshot({path: path.join(directory, `${view.name}-${name}.png`), fullPage});
      await shoot('top', false);
      if (view.name === 'light') {
        await ordersAndFilters(page);
        await addresses(browser, page);
        await unfoldsByKeyboard(page);
        await decides(browser, page);
        await showsHostileTexts(page);
      }
      await page.click('#unfold');
      for (let i = 0; i < 3; ++i) await page.evaluate(() => document.querySelector('.call .toggle[aria-expanded=false]').click());
      await page.click('.evidence summary');
      await shoot('unfolded', true);
      await isAccessible(page, view.name);
      const overflow = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
      assert(overflow <= 0, `${view.name}: ${overflow} pixels too wide`);
      await keepsItsPolicy(page);
      await page.close();
      console.log(`browser: ${view.name}: as it should be`);
    }
    await isQuick(browser);
    assert.deepStrictEqual(complaints, []);
  } finally {
    await browser.close();
  }
})().catch((error) => {
  console.error(error, complaints);
  process.exit(1);
});
