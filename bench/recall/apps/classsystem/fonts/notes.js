var Input = Class.create({
  initialize: function (id) {
    this.element = $(id);
    this.element.SetPredictionMode('t9');                      /* call: KEYBOARD.SetPredictionMode */
    this.open = false;
  },
  show: function (text) {
    this.open = true;
    this.element.SetText(text);
    this.element.Show();
  },
  done: function () {
    this.open = false;
    this.element.Hide();
    return this.element.GetText();
  }
});

var RichInput = Class.create(Input, {
  initialize: function ($super, id, emoji) {
    $super(id);
    this.emoji = emoji;
    if (emoji) {
      this.element.EnableEmojiPage(1);                         /* call: KEYBOARD.EnableEmojiPage */
    }
  },
  show: function ($super, text) {
    this.element.ClearClipboard();                             /* call: KEYBOARD.ClearClipboard */
    $super(text);
  }
});
RichInput.addMethods({
  attach: function () {
    this.element.AttachHardware('usb');                        /* call: KEYBOARD.AttachHardware */
  }
});

tv.declare('notes.Stateful', [], {
  constructorOnce: function (options) { this.options = options || {}; },
  set: function (key, value) {
    this.options[key] = value;
    this.changed && this.changed(key, value);
  },
  get: function (key) { return this.options[key]; }
});

tv.declare('notes.Paper', [notes.Stateful], {
  constructor: function (options) {
    this.fonts = options.fonts;
    this.store = options.store;
    this.lines = [];
    this.fonts.SetHinting('slight');                           /* call: FONT.SetHinting */
  },
  changed: function (key, value) {
    if (key == 'family') {
      this.get('fonts').LoadFont(value);
      this.get('fonts').SubstituteFamily('serif', value);      /* call: FONT.SubstituteFamily */
    }
  },
  write: function (text) {
    this.lines.push(text);
    var width = this.fonts.MeasureText(text);
    this.lines.each(function (line, i) {
      if (i == 0) this.fonts.KernPair(line.charAt(0), line.charAt(1));   /* call: FONT.KernPair */
    }, this);
    this.draw(width);
  },
  draw: function (width) {
    $('paper').style.minWidth = width + 'px';
    $('paper').innerHTML = this.lines.join('<br>');
  },
  save: function () {
    this.store.SetItem('notes', this.lines.join('\n'));
    this.store.SyncToAccount();                                /* call: STORAGE.SyncToAccount */
  },
  CompactDatabase: function () { this.lines = []; }
});

var Notes = Class.create({
  initialize: function () {
    this.input = new RichInput('kbd', true);
    this.paper = new notes.Paper({ fonts: $('fnt'), store: $('sto') });
    document.onkeydown = tv.hitch(this, 'key');
    tv.connect(window, 'onpagehide', this.paper.store, function () { this.CompactDatabase(); });   /* call: STORAGE.CompactDatabase */
  },
  key: function (event) {
    switch (event.keyCode) {
      case 13:
        if (this.input.open) this.paper.write(String(this.input.done()));
        else this.input.show('');
        break;
      case 403: this.paper.set('family', 'Ink'); break;
      case 404: this.paper.save(); break;
      case 405: this.paper.CompactDatabase(); break;           /* decoy */
      case 406: [$('fnt')].invoke('ReleaseGlyphs', 100); break;   /* also: FONT.ReleaseGlyphs */
      case 415: this.input.attach(); break;
      case 461: setTimeout(tv.hitch($('kbd'), 'ShakeKeys', 3), 1); break;   /* also: KEYBOARD.ShakeKeys */
    }
  }
});
new Notes();
