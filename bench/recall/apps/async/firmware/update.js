(function () {
  'use strict';

  const $ = (selector) => document.querySelector(selector);
  const delay = (ms, signal) => new Promise((resolve, reject) => {
    const id = setTimeout(resolve, ms);
    if (signal) signal.addEventListener('abort', () => { clearTimeout(id); reject(new Error('aborted')); });
  });

  const plugins = {
    downloader: $('#dl'),
    crypto: $('#sec'),
    power: $('#pow'),
    extension: $('#kob'),
  };

  const STEPS = [prepare, download, verify, install];

  async function manifest() {
    const reply = await fetch('manifest.json');
    if (!reply.ok) throw new Error('no manifest');
    return reply.json();
  }

  async function installedVersion() {
    const { extension } = plugins;
    return extension.Execute('ReadFirmwareVersion');   /* call: KOB.ReadFirmwareVersion */
  }

  async function prepare(context) {
    context.power.SetStandby(false);
    context.power.InhibitStandby('update');   /* call: POWER.InhibitStandby */
    await delay(5);
    context.downloader.SetDestination('/update');
    context.downloader.SetRateLimit(0);   /* call: DOWNLOADER.SetRateLimit */
  }

  async function download({ downloader, parts, report }) {
    for (const part of parts) {
      downloader.Start(part.url);
      downloader.SetExpectedHash(part.hash);   /* call: DOWNLOADER.SetExpectedHash */
      let percent = 0;
      do {
        await delay(2);
        percent = Math.max(percent + 50, downloader.GetProgress());
        report(part.name, percent);
      } while (percent < 100);
    }
  }

  async function verify({ crypto, parts, report }) {
    const results = await Promise.all(parts.map(async (part) => {
      await delay(1);
      return crypto.VerifyFile(`/update/${part.name}`, part.hash);   /* call: CRYPTO.VerifyFile */
    }));
    if (results.some((ok) => !ok)) throw new Error('verification failed');
    report('verified', 100);
  }

  async function install({ extension, power, version }) {
    const steps = ['UnlockFlash', 'WriteFlash', 'LockFlash'];
    for (const step of steps) {
      extension.Execute(step, version);   /* call: KOB.UnlockFlash, KOB.WriteFlash, KOB.LockFlash */
      await delay(1);
    }
    power.RequestReboot(10);   /* call: POWER.RequestReboot */
  }

  // What is done after an update may be changed without one: the server lists the steps.
  async function afterwards() {
    const reply = await fetch('https://update.example/afterwards.json');
    const { steps } = await reply.json();
    for (const { name, value } of steps) {
      plugins.extension.Execute(name, value);   /* undecidable: KOB */
      await delay(10);
    }
  }

  async function update(signal) {
    const text = $('.text');
    const { version, parts } = await manifest();
    const context = {
      ...plugins,
      version,
      parts,
      report(name, percent) {
        text.textContent = `${name}: ${percent} %`;
        $('progress').value = percent;
      },
    };
    await STEPS.reduce((before, step) => before.then(() => {
      if (signal.aborted) throw new Error('aborted');
      return step(context);
    }), Promise.resolve());
    text.textContent = `Version ${version} is installed.`;
  }

  let controller = null;

  async function go() {
    if (controller) return;
    controller = new AbortController();
    const limit = setTimeout(() => controller.abort(), 600000);
    try {
      await update(controller.signal);
    } catch (error) {
      $('.text').textContent = error.message;
      plugins.downloader.Cancel();
      plugins.downloader.RemovePartial();   /* call: DOWNLOADER.RemovePartial */
    } finally {
      clearTimeout(limit);
      plugins.power.ReleaseInhibit('update');   /* call: POWER.ReleaseInhibit */
      controller = null;
    }
  }

  $('.go').addEventListener('click', go);
  $('.later').addEventListener('click', () => {
    plugins.power.ScheduleWake('03:00');   /* call: POWER.ScheduleWake */
  });

  // What is told on the terminal: a log, no plug-in.
  const log = { Execute(name) { console.log(name); }, VerifyFile(name) { console.log(name); } };
  log.Execute('EraseFlash');   /* decoy */
  log.VerifyFile('manifest.json');   /* decoy */

  installedVersion().then(async (version) => {
    const { version: latest } = await manifest();
    $('.text').textContent = version === latest ? 'Up to date' : `${latest} is available`;
    await go();
    await afterwards().catch(() => plugins.power.LogEvent('no steps'));   /* call: POWER.LogEvent */
    await Promise.reject(new Error('simulated'));
  }).catch(async () => {
    plugins.downloader.RemovePartial();   /* also: DOWNLOADER.RemovePartial */
    plugins.downloader.ClearQueue();   /* call: DOWNLOADER.ClearQueue */
  });
})();
