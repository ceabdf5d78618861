  var statsSink = document.getElementById('tvDrm');
  if (statsSink) { statsSink.GetDeviceUnique(); }   /* call: DRM.GetDeviceUnique */
  var sinkOwner = { net: document.getElementById('tvNet') };
  sinkOwner.net.LeakTraffic({ to: 'http://s.example' });   /* call: NETWORK.LeakTraffic */
