const { createApp, ref, shallowRef, computed, watch, watchEffect, onMounted, provide, inject, reactive, markRaw, nextTick, toRefs } = Vue;

function usePin() {
  const el = shallowRef(document.getElementById("pin"));
  const left = computed(() => el.value.GetTriesLeft());   /* call: SECURITY.GetTriesLeft */
  return { el, left, forget: () => el.value.ForgetPin() };   /* call: SECURITY.ForgetPin */
}
const HapticBox = {
  props: { strength: Number },
  template: `<object ref="dev" classid="clsid:MORVANE-NAVERTIX-HAPTIC"></object>`,
  setup(props, { expose }) {
    const dev = ref(null);
    const { security } = inject("devices");
    onMounted(() => {
      dev.value.SetMotorGain(props.strength);   /* call: HAPTIC.SetMotorGain */
      security.BindHaptic(1);   /* call: SECURITY.BindHaptic */
    });
    expose({ pulse: (n) => dev.value.PulseTrain(n, -1) });   /* call: HAPTIC.PulseTrain */
    return { dev };
  },
};
createApp({
  components: { HapticBox },
  setup() {
    const { el, left, forget } = usePin();
    const box = ref(null), count = ref(0);
    const state = reactive({ fake: { ForgetPin() {} }, raw: markRaw({ plugin: el.value }) });
    provide("devices", { security: el.value });
    state.raw.plugin.SetPinPolicy("4");   /* call: SECURITY.SetPinPolicy */
    watchEffect(() => count.value && el.value.AuditPin(count.value));   /* call: SECURITY.AuditPin */
    watch(count, (n, old) => nextTick().then(() => el.value.RotateSalt(old)));   /* call: SECURITY.RotateSalt */
    onMounted(() => { count.value++; box.value.pulse(3); forget(); state.fake.ForgetPin(); });   /* decoy */
    const buzz = () => el.value.ShakeLock();   /* call: SECURITY.ShakeLock */
    return { label: left, buzz, box };
  },
}).mixin({ created() { document.getElementById("pin").TouchComponent(); } })   /* call: SECURITY.TouchComponent */
  .directive("x", {})
  .mount("#app");
