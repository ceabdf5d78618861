const rawNet = document.getElementById('net');
const rawBand = document.getElementById('band');
const net = logged(rawNet, 'net');
const band = logged(rawBand, 'band');
const short = aliased(rawNet, { ping: 'PingHost', wifi: 'ScanWifi' });    /* call: NETWORK.PingHost, NETWORK.ScanWifi */

const out = (text) => { document.getElementById('out').textContent += `${text}\n`; };

const history = fallback({ samples: [], GetJitter() { return this.samples.length; } }, { SetServer: () => 'none' });

function measure() {
  band.StartMeasurement();
  band.SetServer('speed.example');                      /* call: BANDWIDTH.SetServer */
  const sample = { down: band.GetDownlinkRate(), jitter: band.GetJitter() };    /* call: BANDWIDTH.GetJitter */
  rawBand.StopMeasurement();
  rawBand.DiscardSamples();                             /* call: BANDWIDTH.DiscardSamples */
  history.samples.push(sample);
  out(`${sample.down} kbit/s, jitter ${history.GetJitter()}`);     /* decoy */
}

function trace(host) {
  net.SetMtu(1400);                                     /* call: NETWORK.SetMtu */
  out(net.Traceroute(host));                            /* call: NETWORK.Traceroute */
  out(short.ping(host));                                /* also: NETWORK.PingHost */
  out(history.SetServer(host));                         /* decoy */
}

function wifi() {
  if ('wifi' in short) out(short.wifi());               /* also: NETWORK.ScanWifi */
  const strength = Reflect.get(rawNet, 'GetSignalDbm');     /* also: NETWORK.GetSignalDbm */
  out(Reflect.apply(strength, rawNet, []));             /* call: NETWORK.GetSignalDbm */
}

// Settings as a live object: a write goes to the plug-in.
const settings = new Proxy({ dhcp: true, ipv6: false }, {
  set(target, key, value) {
    target[key] = value;
    rawNet[`Set${key[0].toUpperCase()}${key.slice(1)}`](value);     /* call: NETWORK.SetDhcp, NETWORK.SetIpv6 */
    return true;
  },
});

const actions = {
  403: measure,
  404: () => trace('tv.example'),
  405: wifi,
  406: () => { settings.dhcp = !settings.dhcp; settings.ipv6 = true; },
  457: () => out(callLog.map(({ label, name, ms }) => `${label}.${String(name)} ${ms.toFixed(1)}`).join('\n')),
  461: () => {
    // rawNet.FactoryReset();                           /* decoy */
    const { proxy, revoke } = Proxy.revocable(rawNet, {});
    out(proxy instanceof HTMLObjectElement);
    revoke();
  },
};

document.addEventListener('keydown', ({ keyCode }) => {
  try {
    actions[keyCode]?.();
  } catch (error) {
    out(`failed: ${error.message}`);
  }
});
out(`Connected: ${rawNet.GetConnectionState()}, ${rawNet.GetUptimeSeconds()} s`);     /* call: NETWORK.GetUptimeSeconds */
