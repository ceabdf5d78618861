(function () {
  var list = document.getElementById('results');

  function line(text, good) {
    var item = document.createElement('li');
    item.className = good ? 'good' : 'bad';
    item.appendChild(document.createTextNode(text));
    list.appendChild(item);
  }

  function checkCable() {
    return plugin('net').then(function (net) {
      var state = net.GetConnectionState();
      var speed = net.GetLinkSpeed();                          /* call: NETWORK.GetLinkSpeed */
      line('Cable: ' + speed + ' Mbit/s', state);
      return net;
    });
  }

  function checkNames(net) {
    return Promise.resolve(net)
      .then(wait(2))
      .then(function (n) {
        var ok = n.ResolveName('cdn.example');                 /* call: NETWORK.ResolveName */
        line('Names', ok);
        return { net: n, ok: ok };
      });
  }

  function checkServer(result) {
    return withTimeout(fetchText('http://cdn.example/alive'), 200)
      .then(function (text) { line('Server: ' + text, true); })
      .catch(function (error) {
        line('Server: ' + error.message, false);
        result.net.TraceRoute('cdn.example');                  /* call: NETWORK.TraceRoute */
      })
      .then(function () { return result.net; });
  }

  function measure() {
    return plugin('bw').then(function (bw) {
      bw.StartMeasurement();
      bw.SetSampleSize(1 << 20);                               /* call: BANDWIDTH.SetSampleSize */
      return new Promise(function (resolve) {
        bw.OnSample(function (rate) { resolve({ rate: rate, meter: bw }); });   /* call: BANDWIDTH.OnSample */
      });
    }).then(function (sample) {
      var jitter = sample.meter.GetJitter();                   /* call: BANDWIDTH.GetJitter */
      line('Rate ' + sample.rate + ', jitter ' + jitter, sample.rate > 4);
      sample.meter.StopMeasurement();
      return sample;
    });
  }

  function download() {
    return Promise.all([plugin('dl'), plugin('bw')]).then(function (both) {
      both[0].SetDestination('/tmp');
      both[0].SetChunkSize(65536);                             /* call: DOWNLOADER.SetChunkSize */
      both[1].MarkInterval('download');                        /* call: BANDWIDTH.MarkInterval */
      return both[0];
    });
  }

  function report(summary) {
    return { GetJitter: function () { return summary; }, then: undefined };
  }

  function run() {
    list.innerHTML = '';
    return series([checkCable, checkNames, checkServer, measure, download])
      .then(function (downloader) {
        downloader.VerifyChecksum('sha1');                     /* call: DOWNLOADER.VerifyChecksum */
      })
      .then(function () { return report('done'); })
      .then(function (r) { line('Summary: ' + r.GetJitter(), true); })   /* decoy */
      .catch(function (error) { line(error.message, false); });
  }

  var ready = plugin('net');
  ready.then(function (net) { net.EnableDiagnostics(true); }, null);   /* call: NETWORK.EnableDiagnostics */

  plugin('missing').then(function (element) {
    line('// element.Calibrate() is not for us', true);        /* decoy */
    return element;
  }, function () {
    return plugin('bw');
  }).then(function (meter) {
    meter.ResetCounters();                                     /* call: BANDWIDTH.ResetCounters */
  }).finally(function () {
    document.getElementById('again').onclick = run;
  });

  ready.then(run).then(function () {
    return ready;
  }).then(function (net) {
    net.UploadReport(list.innerHTML);                          /* call: NETWORK.UploadReport */
  });
}());
