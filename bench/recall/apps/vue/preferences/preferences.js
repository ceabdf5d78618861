'use strict';

Vue.component('setting-row', {
  props: { setting: { type: Object, required: true } },
  template: '<p @click="next">{{ setting.label }}: {{ setting.values[setting.index] }}</p>',
  methods: {
    next() {
      const { values, index } = this.setting;
      this.setting.index = (index + 1) % values.length;
      this.$emit('change', this.setting);
    },
  },
});

const pluginMixin = {
  created() {
    const { plugin } = this.$options;
    if (!plugin) return;
    const node = document.createElement('object');
    node.setAttribute('classid', `clsid:MORVANE-NAVERTIX-${plugin}`);
    document.body.appendChild(node);
    this.$plugin = node;
  },
};

Vue.component('font-list', {
  mixins: [pluginMixin],
  plugin: 'FONT',
  data: () => ({ fonts: [], active: 0 }),
  template: '<ul><li v-for="(f, i) in fonts" @click="use(i)">{{ f }}</li></ul>',
  mounted() {
    const list = this.$plugin.GetFontList();
    this.fonts = Array.isArray(list) ? list : ['Sans', 'Serif'];
    this.$plugin.SetRenderMode('subpixel');   /* call: FONT.SetRenderMode */
  },
  methods: {
    use(index) {
      this.active = index;
      this.$plugin.LoadFont(this.fonts[index]);
      this.$plugin.ActivateFont(this.fonts[index]);   /* call: FONT.ActivateFont */
      this.$nextTick(() => this.$plugin.WarmGlyphCache());   /* call: FONT.WarmGlyphCache */
    },
  },
});

const storage = {
  install(Vue) {
    const node = document.createElement('object');
    node.setAttribute('classid', 'clsid:MORVANE-NAVERTIX-STORAGE');
    document.head.appendChild(node);
    Vue.prototype.$storage = node;
  },
};

Vue.use(storage);

window.vm = new Vue({
  el: '#app',
  data: {
    title: 'Preferences',
    language: 'en',
    languages: ['en', 'de', 'fr'],
    saved: false,
    settings: [
      { name: 'size', label: 'Subtitle size', values: [24, 32, 40], index: 0 },
      { name: 'delay', label: 'Subtitle delay', values: [0, 100, 200], index: 0 },
      { name: 'hour', label: 'Hours', values: [24, 12], index: 0 },
    ],
  },
  computed: {
    size() {
      return this.settings[0].values[this.settings[0].index];
    },
    summary() {
      return this.settings.map((s) => `${s.name}=${s.values[s.index]}`).join(';');
    },
  },
  watch: {
    language(value) {
      this.$refs.locale.SetLanguage(value);
      this.$refs.locale.ReloadCatalog(value);   /* call: LOCALE.ReloadCatalog */
    },
    summary: {
      handler(text) {
        this.$storage.SetItem('preferences', text);
        this.$storage.FlushAsync(() => { this.saved = true; });   /* call: STORAGE.FlushAsync */
      },
    },
  },
  methods: {
    apply({ name, values, index }) {
      const value = values[index];
      const { subtitle, locale } = this.$refs;
      if (name === 'size') subtitle.SetFontSize(value);
      if (name === 'delay') subtitle.SetDelay(value);   /* call: SUBTITLE.SetDelay */
      if (name === 'hour') locale.SetHourCycle(value);   /* call: LOCALE.SetHourCycle */
    },
    reset() {
      this.settings.forEach((s) => { s.index = 0; this.apply(s); });
      this.$storage.Clear();
      this.$storage.CompactNow();   /* call: STORAGE.CompactNow */
      this.mock.ReloadCatalog('xx');   /* decoy */
    },
    onKey({ keyCode }) {
      const row = { 403: 0, 404: 1, 405: 2 }[keyCode];
      if (row !== undefined) this.$children.filter((c) => c.setting)[row].next();
      if (keyCode === 406) this.language = this.languages[(this.languages.indexOf(this.language) + 2) % 3];
    },
  },
  beforeCreate() {
    this.mock = { ReloadCatalog() {}, SetDelay() {} };
  },
  mounted() {
    this.$storage.OpenDatabase('preferences');   /* call: STORAGE.OpenDatabase */
    this.mock.SetDelay(0);   /* decoy */
    document.addEventListener('keydown', this.onKey);
  },
});
