'use strict';

/** Overlays are pages in frames. They ask for what they need by messages, or through `host`. */
const host = {
  plugins: { live: document.getElementById('live'), guide: document.getElementById('guide') },
  overlays: {},

  open(name) {
    if (this.overlays[name]) return this.overlays[name];
    const frame = document.createElement('iframe');
    frame.name = name;
    frame.src = `overlays/${name}.html`;
    document.body.appendChild(frame);
    this.overlays[name] = frame;
    return frame;
  },

  close(name) {
    const frame = this.overlays[name];
    if (frame) frame.hidden = true;
  },
};
window.host = host;

const api = {
  async present({ service }) {
    return host.plugins.guide.GetPresentEvent(service);
  },
  async rate({ id, stars }) {
    return host.plugins.guide.RateEvent(id, stars);   /* call: EPG.RateEvent */
  },
  async zap({ service }) {
    host.plugins.live.SelectService(service);
    host.plugins.live.FadeIn(200);   /* call: BROADCAST.FadeIn */
  },
  async pip({ on }) {
    host.plugins.live.SetPictureInPicture(on);   /* call: BROADCAST.SetPictureInPicture */
  },
};

addEventListener('message', async ({ data, source }) => {
  if (!data || !api[data.method]) return;
  const result = await api[data.method](data.parameters || {});
  source.postMessage({ reply: data.id, result }, '*');
});

addEventListener('keydown', ({ keyCode }) => {
  if (keyCode === 457 || keyCode === 403) host.open('guide');
  if (keyCode === 404) host.open('info');
  if (keyCode === 27) host.close('guide');
  if (keyCode === 405 && frames.info) frames.info.flash(host.plugins.live);
});

// Overlays of partners were to have this instead of `host`. They never came.
const partnerHost = { rate: { RateEvent: () => 0 }, pip: { SetPictureInPicture() {} } };
partnerHost.rate.RateEvent(1);   /* decoy */
partnerHost.pip.SetPictureInPicture(false);   /* decoy */

host.open('guide');
host.open('info');
