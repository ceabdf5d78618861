// open-page.js PAGE DIRECTORY: uses the page of a report as people do; screenshots go to DIRECTORY.
'use strict';
const assert = require('assert');
const fs = require('fs');
const path = require('path');
const {pathToFileURL} = require('url');
const puppeteer = require('puppeteer-core');

const [file, directory] = process.argv.slice(2);
const axe = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf-8');
const hostileName = '<script>alert(1)</script>';
const complaints = [];

const views = [
  {name: 'light', width: 1280, height: 900, scheme: 'light'},
  {name: 'dark', width: 1280, height: 900, scheme: 'dark'},
  {name: 'phone', width: 390, height: 844, scheme: 'light'},
  {name: 'phone-dark', width: 390, height: 844, scheme: 'dark'},
];

const open = async (browser, {width, height, scheme}) => {
  const page = await browser.newPage();
  page.on('console', (message) => complaints.push(`console: ${message.text()}`));
  page.on('pageerror', (error) => complaints.push(`error: ${error.message}`));
  page.on('dialog', (dialog) => (complaints.push(`dialog: ${dialog.message()}`), dialog.dismiss()));
  page.on('request', (request) => {
    if (request.url() !== pathToFileURL(file).href) complaints.push(`request: ${request.url()}`);
  });
  await page.setViewport({width, height});
  await page.emulateMediaFeatures([{name: 'prefers-color-scheme', value: scheme}]);
  await page.goto(pathToFileURL(file).href);
  return page;
};

const names = (page) => page.$$eval('.application:not([hidden]) .toggle', (all) => all.map((each) => each.textContent));
const numbers = (page, key) =>
  page.$$eval('.application:not([hidden])', (all, key) => all.map((each) => Number(each.dataset[key])), key);
const isRising = (list) => list.every((value, i) => i === 0 || list[i - 1] <= value);
const type = async (page, text) => {
  await page.$eval('#search', (field) => field.select());
  await page.keyboard.press('Backspace');
  await page.type('#search', text);
};

const sorts = async (page) => {
  const all = await names(page);
  for (const [key, first] of [['uses', 'descending'], ['rank', 'ascending'], ['missed', 'descending']]) {
    for (const order of [first, first === 'ascending' ? 'descending' : 'ascending']) {
      await page.click(`[data-sort=${key}]`);
      assert.strictEqual(await page.$eval(`th:has([data-sort=${key}])`, (cell) => cell.getAttribute('aria-sort')), order);
      const values = await numbers(page, key);
      assert(isRising(order === 'ascending' ? values : [...values].reverse()), `${key} ${order}: ${values}`);
      assert.notStrictEqual(values[0], values[values.length - 1]);
    }
  }
  assert.strictEqual((await page.$$('[aria-sort]')).length, 1);
  await page.click('[data-sort=name]');
  const sorted = await names(page);
  assert(sorted.indexOf('catalogue-2') < sorted.indexOf('catalogue-10'));
  assert.deepStrictEqual([...sorted].sort(), [...all].sort());
};

const filters = async (page) => {
  const all = (await names(page)).length;
  await type(page, 'alert(1)</SCRIPT>');
  assert.deepStrictEqual(await names(page), [hostileName]);
  assert.strictEqual(await page.$eval('#shown', (status) => status.textContent), `1 of ${all} shown`);
  await type(page, 'no such thing');
  assert.deepStrictEqual(await names(page), []);
  await type(page, ' ');
  assert.strictEqual((await names(page)).length, all);

  await page.click('.choice.failed');
  assert.deepStrictEqual(await names(page), ['missing.wgt']);
  await page.click('.choice.incomplete');
  assert.deepStrictEqual((await names(page)).sort(), ['damaged.swf', 'missing.wgt']);
  await page.click('.choice.failed');
  await page.click('.choice.incomplete');

  await page.click('.find');
  const found = (await names(page)).length;
  assert(found > 0 && found < all);
  await page.click('.find');
  assert.strictEqual((await names(page)).length, all);
};

const unfoldsByKeyboard = async (page) => {
  await type(page, 'minified');
  await page.focus('#unfold');
  while (!await page.evaluate(() => document.activeElement.classList.contains('toggle'))) await page.keyboard.press('Tab');
  const isOpen = () => page.evaluate(() => document.activeElement.getAttribute('aria-expanded'));
  assert.strictEqual(await isOpen(), 'false');
  await page.keyboard.press('Enter');
  assert.strictEqual(await isOpen(), 'true');
  await page.keyboard.press('Tab');
  const call = await page.evaluateHandle(() => document.activeElement.parentElement);
  const state = () => call.evaluate((element) => [element.open, element.querySelector('mark').checkVisibility()]);
  assert.deepStrictEqual(await state(), [true, true]);
  await page.keyboard.press('Enter');
  assert.deepStrictEqual(await state(), [false, false]);
  await page.keyboard.press('Enter');
  assert.deepStrictEqual(await state(), [true, true]);
  assert.strictEqual(await call.$eval('mark', (mark) => mark.textContent), 'tv.Tune(9)');
  assert.strictEqual(await call.$eval('.called .number', (number) => number.textContent), '1');
  await type(page, ' ');
};

const showsHostileTexts = async (page) => {
  assert((await names(page)).includes(hostileName));
  assert((await names(page)).includes('\\u202egpj.\uFFFD\\x1b[31m\\x0a'));
  const foreign = await page.evaluate(() => ({
    scripts: document.scripts.length,
    images: document.images.length,
    links: [...document.links].map((link) => link.getAttribute('href')),
    attributes: [...document.querySelectorAll('*')].some((each) => each.getAttributeNames()
        .some((name) => name.startsWith('on') || name === 'style')),
    lines: [...document.querySelectorAll('.line code')].map((line) => line.textContent),
  }));
  assert.deepStrictEqual([foreign.scripts, foreign.images, foreign.links, foreign.attributes],
      [1, 0, ['#applications'], false]);
  assert(foreign.lines.includes('\ttv.GetSerial("</script><script>x=1");'));
  assert(foreign.lines.includes('\ttv.Run(1); tv.Open("\uFFFD{0}[x]&amp;");'));
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
    args: ['--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage'],
  });
  try {
    for (const view of views) {
      const page = await open(browser, view);
      const shoot = (name, fullPage) => page.screenshot({path: path.join(directory, `${view.name}-${name}.png`), fullPage});
      await shoot('top', false);
      if (view.name === 'light') {
        await sorts(page);
        await filters(page);
        await unfoldsByKeyboard(page);
        await showsHostileTexts(page);
      }
      await page.click('#unfold');
      await shoot('unfolded', true);
      await isAccessible(page, view.name);
      const overflow = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
      assert(overflow <= 0, `${view.name}: ${overflow} pixels too wide`);
      await keepsItsPolicy(page);
      await page.close();
      console.log(`browser: ${view.name}: as it should be`);
    }
    assert.deepStrictEqual(complaints, []);
  } finally {
    await browser.close();
  }
})().catch((error) => {
  console.error(error, complaints);
  process.exit(1);
});
