Vue.config.productionTip = false;

Vue.component('track-row', {
  props: { track: Object, active: Boolean },
  template: '#track-template'
});

Vue.component('equalizer', {
  props: ['bands'],
  data: function () { return { at: 0 }; },
  template: '<div class="eq"><b v-for="(b, i) in bands" :key="i" @click="raise(i)">{{ b }}</b></div>',
  methods: {
    raise: function (i) {
      this.at = i;
      this.$plugins.a.SetBand(i, this.bands[i] + 1);           /* call: AUDIO.SetBand */
      this.$emit('raised', i);
    }
  },
  beforeDestroy: function () {
    this.$plugins.a.FlattenBands();                            /* call: AUDIO.FlattenBands */
  }
});

var saving = {
  created: function () {
    this.store = document.getElementById('s');
    this.store.BeginBatch();                                   /* call: STORAGE.BeginBatch */
  },
  methods: {
    save: function (key, value) {
      this.store.SetItem(key, JSON.stringify(value));
      this.$tv('s', 'TouchItem', key);                         /* also: STORAGE.TouchItem */
    }
  }
};

new Vue({
  el: '#app',
  mixins: [saving],
  data: {
    tracks: [{ id: 1, title: 'Tide' }, { id: 2, title: 'Low Sun' }, { id: 3, title: 'Ferry' }],
    current: null,
    playing: false,
    showEq: true,
    bands: [0, 2, 1, 0],
    jukebox: { QueueTrack: function () {}, SetGapless: function () {} }
  },
  computed: {
    title: function () { return this.current ? this.current.title : 'Nothing'; },
    position: function () { return this.playing ? this.$plugins.p.GetBufferedRange() : 0; }   /* call: PLAYER.GetBufferedRange */
  },
  watch: {
    current: function (track) {
      this.$plugins.p.Open('http://music.example/' + track.id);
      this.$plugins.p.QueueTrack(track.id + 1);                /* call: PLAYER.QueueTrack */
      this.jukebox.QueueTrack(track.id);                       /* decoy */
      this.save('last', track.id);
    }
  },
  mounted: function () {
    var vm = this;
    this.$plugins.p.SetGapless(true);                          /* call: PLAYER.SetGapless */
    this.$nextTick(function () {
      vm.store.EndBatch();                                     /* call: STORAGE.EndBatch */
    });
    document.addEventListener('keydown', this.onKey);
  },
  methods: {
    onKey: function (e) {
      var at = this.tracks.indexOf(this.current);
      if (e.keyCode === 40) { this.current = this.tracks[(at + 1) % this.tracks.length]; }
      if (e.keyCode === 415) { this.playing = true; this.$plugins.p.Play(); }
      if (e.keyCode === 413) { this.playing = false; this.$plugins.p.Stop(); }
      if (e.keyCode === 406) { this.showEq = !this.showEq; }
      if (e.keyCode === 405) { this.jukebox.SetGapless('$plugins.p.FadeOut(2)'); }   /* decoy */
    },
    choose: function (track) {
      this.current = track;
      this.$plugins.p.CueTrack(track.id);                      /* call: PLAYER.CueTrack */
    },
    raised: function (i) { this.bands.splice(i, 1, this.bands[i] + 1); }
  },
  template: '<div><h1>{{ title }} {{ position }}</h1><ul>' +
    '<track-row v-for="t in tracks" :key="t.id" :track="t" :active="t === current" @choose="choose"></track-row></ul>' +
    '<equalizer v-if="showEq" :bands="bands" @raised="raised"></equalizer>' +
    '<button @click="$plugins.a.SaveSoundProfile(bands)">Save</button></div>'   /* text: AUDIO.SaveSoundProfile */
});
