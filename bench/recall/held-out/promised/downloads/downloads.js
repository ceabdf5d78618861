(function () {
  var queue = new Queue(2);
  var items = [{ title: "Nature", url: "http://cdn.example/1.mp4" }, { title: "Cartoon", url: "http://cdn.example/2.mp4" }];

  function draw(text) {
    document.getElementById("list").innerHTML = items.map(function (item) {
      return "<p>" + item.title + " " + (item.state || "") + "</p>";
    }).join("") + (text || "");
  }

  downloader().then(function (d) {
    d.SetDestination("/media");
    d.SetMaxConnections(3);                             /* call: DOWNLOADER.SetMaxConnections */
    return d;
  }).then(function (d) {
    d.RestoreQueue();                                   /* call: DOWNLOADER.RestoreQueue */
    return fileStore();
  }).then(function (fs) {
    fs.ReserveSpace(1 << 20);                           /* call: FILESTORE.ReserveSpace */
  }).catch(draw);
  queue.SetMaxConnections(1);                           /* decoy */

  function start(item) {
    return queue.add(function () {
      return all().then(function (plugins) {
        var d = plugins[0], fs = plugins[1];
        item.state = "loading";
        draw();
        d.Start(item.url);
        d.SetChecksum(item.url, "sha1");                /* call: DOWNLOADER.SetChecksum */
        return Promise.race([finished(d), timeout(300)]).then(function (result) {
          return { fs: fs, item: item, result: result };
        });
      });
    }).then(function (done) {
      done.item.state = "done";
      done.fs.UnpackArchive(done.item.title);           /* call: FILESTORE.UnpackArchive */
      draw(done.result);
      return done.fs;
    }).then(function (fs) {
      return fs.TouchFile(item.title);                  /* call: FILESTORE.TouchFile */
    });
  }

  function finished(d) {
    return new Promise(function (resolve) { d.NotifyOnFinish(resolve); });     /* call: DOWNLOADER.NotifyOnFinish */
  }

  function timeout(ms) {
    return new Promise(function (resolve, reject) {
      setTimeout(function () { reject(new Error("too slow")); }, ms);
    });
  }

  function pause() {
    var paused = downloader().then(function (d) { d.Pause(); return d; });
    paused.then((d) => d.PersistQueue());               /* call: DOWNLOADER.PersistQueue */
    paused.finally(function () { queue.ResumeAll(); }); /* decoy */
    return paused;
  }

  function install() {
    ready("missing").catch(function () {
      return ready("al");
    }).then(function (loader) {
      loader.Open();
      loader.InstallPackage("/media/game.wgt");         /* call: APPLOADER.InstallPackage */
      throw { plugin: loader, code: 5 };
    }).catch(function (failure) {
      failure.plugin.RollbackInstall(failure.code);     /* call: APPLOADER.RollbackInstall */
    });
  }

  var actions = { 403: pause, 404: install, 13: function () { return Promise.all(items.map(start)); } };
  document.addEventListener("keydown", function (e) {
    var action = actions[e.keyCode];
    if (action) {
      Promise.resolve(action()).catch(function (error) { draw(error.message); });
    }
    if (e.keyCode === 461) {
      downloader().then(({ CancelAll: cancel }) => cancel && draw("stopped"));    /* decoy */
    }
  });
  draw();
}());
