'use strict';

const bandwidth = traced('bandwidth', meter.device);
const [left, right] = Link.shared.headsets;

bandwidth.SetReportInterval(100);
bandwidth.SetProbeSize(1024);                                               /* also: BANDWIDTH.SetProbeSize */
bandwidth.StartMeasurement();

/** What is shown of a thing: plug-ins and headsets go by other descriptors. */
const descriptors = {
  headset: {
    apply(headset) {
      headset.SwitchCodec('aptx').SetVisible(true);                         /* decoy */
      return headset.ReadBattery();                                         /* decoy */
    },
  },
  link: {
    apply({ device_ }) {
      device_.StartDiscovery();
      device_.SetVisible(true);                                             /* also: BLUETOOTH.SetVisible */
      return device_.ReadBattery(0);                                        /* also: BLUETOOTH.ReadBattery */
    },
  },
};
const show = (kind, thing) => { document.title = String(descriptors[kind].apply(thing)); };

Object.defineProperty(window, 'currentHeadset', {
  get: () => (left.volume > right.volume ? left : right),
});
Object.defineProperty(window, 'adapter', {
  configurable: true,
  get: () => document.getElementById('bt'),
});

const keys = {
  13() { show('headset', left); },
  38() { left.volume += 1; currentHeadset.Notify('up'); },                  /* decoy */
  40() { right.volume -= 1; currentHeadset.SwitchCodec('sbc'); },           /* decoy */
  403() { show('link', Link.shared); },
  404() {
    adapter.SwitchCodec('ldac');                                            /* call: BLUETOOTH.SwitchCodec */
    right.SwitchCodec('ldac');                                              /* decoy */
  },
  405() {
    tracer.Truncate(20);                                                    /* decoy */
    tracer.Dump(document.getElementById('trace'));                          /* decoy */
  },
  406() { Link.shared.mode = 'low-energy'; },
  19() { document.title = `${meter.speed} ${meter.guess}`; },
  27() {
    silent.ForgetAll();                                                     /* decoy */
    silent.SetLinkMode('off');                                              /* decoy */
    adapter.ForgetAll();                                                    /* call: BLUETOOTH.ForgetAll */
    meter.device.Truncate('log');                                           /* call: BANDWIDTH.Truncate */
  },
};
addEventListener('keydown', ({ keyCode }) => keys[keyCode]?.());
