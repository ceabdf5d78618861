var hold = Object.freeze({ el: document.getElementById('cry') });
Vue.mixin({ created: function () { this.$options.device && this.$options.device.MixCreated(); } });   /* call: IMAGEVIEWER.MixCreated */
Vue.component('child', { props: ['plug'], template: '<i @click="$emit(\'done\', plug())">c</i>',
  mounted: function () { this.plug().HashBlock(); this.$emit('done', this.plug()); } });   /* call: CRYPTO.HashBlock */
var vm = new Vue({
  el: '#app', device: document.getElementById('imv'),
  data: function () { return { n: 1, wrapped: function () { return hold.el; } }; },
  computed: { name: function () { return this.dev().NameRaw(this.n); },   /* call: IMAGEVIEWER.NameRaw */
    zoom: { get: function () { return this.dev().ZoomGet(); }, set: function (v) { this.dev().ZoomSet(v); } } },   /* call: IMAGEVIEWER.ZoomGet, IMAGEVIEWER.ZoomSet */
  watch: { n: function (v) { this.dev().WatchN(v); }, 'm.x': { handler: 'rotate', deep: true } },   /* call: IMAGEVIEWER.WatchN */
  methods: { dev: function () { return this.$options.device; },
    rotate: function (n) { this.dev().RotateRaw(n); },   /* call: IMAGEVIEWER.RotateRaw */
    finish: function (p) { p.Finalize9(); } },   /* call: CRYPTO.Finalize9 */
  mounted: function () { var self = this; this.$nextTick(function () { self.n = 2; self.dev().TickRaw(); self.zoom = self.zoom; }); }   /* call: IMAGEVIEWER.TickRaw */
});
setTimeout(function () { document.getElementById('b').click(); }, 50);
