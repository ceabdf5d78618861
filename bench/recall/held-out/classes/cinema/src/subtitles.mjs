import Plugin from './plugin.mjs';

export class Subtitles extends Plugin {
  static styles = ['plain', 'box', 'outline'];
  #style = 1;

  // The plug-in needs no opening.
  open() { return this; }
  close() { this.native.Hide(); }

  select(language) {
    this.native.SetTrack(language);
    this.native.Show();
  }

  nextStyle() {
    this.#style = ++this.#style % Subtitles.styles.length;
    const style = Subtitles.styles[this.#style];
    this.native[`Set${style === 'plain' ? 'Plain' : 'Fancy'}Style`](style);   /* call: SUBTITLE.SetPlainStyle, SUBTITLE.SetFancyStyle */
  }

  shift(ms) { this.native.SetDelay(ms); }                         /* call: SUBTITLE.SetDelay */
}

/** Draws subtitles in the page, for films that bring a text file. Has the same interface as the plug-in. */
export class TextTrack {
  lines = [];
  SetDelay(ms) { this.delay = ms; }
  SetPlainStyle() { this.style = 'plain'; }
  Load(text) { this.lines = text.split('\n'); }
}
