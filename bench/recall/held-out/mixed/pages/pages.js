class Device {
  constructor(id, kind) {
    this.plugin = document.getElementById(id);
    this.kind = kind;
    this.opacity = 100;
  }
}

class TextDevice extends Timed(Searching(Device)) {
  constructor() {
    super('text', 'Text');
    this.number = 100;
  }

  show(n) {
    this.plugin.Open();
    this.remember(this.number);
    this.number = n;
    this.plugin.ShowPage(n);
    this.startTimer(40);
    return this;
  }

  back() {
    this.plugin.ShowPage(this.recall());
    this.plugin.ClearSearch();                          /* call: TELETEXT.ClearSearch */
  }
}
mix(TextDevice.prototype, Fading, Resizable, Remembering);

class SubtitleDevice extends Device {
  constructor() { super('subs', 'Subtitle'); }
  toggle() {
    this.on = !this.on;
    if (this.on) {
      this.plugin.Show();
      this.plugin.SetOutlineColor('black');             /* call: SUBTITLE.SetOutlineColor */
    } else {
      this.plugin.Hide();
    }
  }
}
mix(SubtitleDevice.prototype, Resizable, {
  toString() { return `Subtitles ${this.on ? 'on' : 'off'}, ${this.plugin.GetTrackLabel()}`; },     /* call: SUBTITLE.GetTrackLabel */
});

// An on-screen bar in the page itself; fades and resizes too, but has no plug-in.
class Bar {
  constructor() {
    this.kind = 'Bar';
    this.plugin = { SetOpacity: (v) => { this.shade = v; }, SetBarSize: () => {}, SearchPages: () => [] };
  }
}
mix(Bar.prototype, Resizable);
Object.assign(Bar.prototype, { find(words) { return this.plugin.SearchPages(words); } });     /* decoy */

const text = new TextDevice(), subs = new SubtitleDevice(), bar = new Bar();
const keys = {
  13: () => text.show(100),
  33: () => text.show(text.number + 1),
  34: () => text.show(text.number - 1),
  403: () => text.fade(text.faded ? 100 : 60),
  404: () => [text, subs, bar].forEach((d) => d.resize('double')),
  405: () => { text.search('weather').stopTimer(); bar.find('weather'); },
  406: () => subs.toggle(),
  457: () => { document.getElementById('bar').textContent = `${subs}; text.plugin.PrintPage(${text.number})`; },    /* decoy */
  461: () => text.back(),
};
document.addEventListener('keydown', (e) => keys[e.keyCode] && keys[e.keyCode]());
// Subtitles in two languages: subs.plugin.SetSecondTrack()    /* decoy */
