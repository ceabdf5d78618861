Vue.component("track-list", {
  props: ["device"],
  data() { return { n: 0 }; },
  template: '<ul><li v-for="t in 2" @click="$emit(\'pick\', device, t)">{{ label(t) }}</li></ul>',
  created() { this.device.OpenDemux(1); },   /* call: SUBTITLE.OpenDemux */
  methods: { label(t) { return this.device.GetTrackHash(t); } },   /* call: SUBTITLE.GetTrackHash */
  watch: { n: { immediate: true, handler() { this.device.TrackChanged(this.n); } } },   /* call: SUBTITLE.TrackChanged */
});
const teletext = {
  computed: { ttx: () => document.getElementById("ttx") },
  mounted() { this.ttx.PinPage(888); },   /* call: TELETEXT.PinPage */
};
Vue.prototype.$tv = { ttx: document.getElementById("ttx") };
const vm = new Vue({
  el: "#app",
  mixins: [teletext],
  data: { count: 1, fake: { GetTrackHash() {}, SetBlink() {} } },
  computed: {
    title() { return "n" + this.count + this.$tv.ttx.GetRowText(1); },   /* call: TELETEXT.GetRowText */
  },
  methods: {
    sub() { return document.getElementById("sub"); },
    pick(device, t) { device.SetTrack(t); device.LockTrack(t); },   /* call: SUBTITLE.LockTrack */
  },
  async mounted() {
    await this.$nextTick();
    this.sub().SetShadowColour("#000");   /* call: SUBTITLE.SetShadowColour */
    this.fake.SetBlink(1);   /* decoy */
    this.fake.GetTrackHash(1);   /* decoy */
    this.$watch("count", () => this.$tv.ttx.SetBlink(0));   /* call: TELETEXT.SetBlink */
    this.count++;
  },
});
vm.$on("tv", (p) => p.ExportPages("x"));   /* call: TELETEXT.ExportPages */
vm.$emit("tv", vm.$tv.ttx);
Vue.directive("never", { bind() {} });
Vue.nextTick(() => vm.$options.methods.sub().SetDelayMs(-200));   /* call: SUBTITLE.SetDelayMs */
