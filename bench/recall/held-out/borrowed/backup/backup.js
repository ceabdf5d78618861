(function (byId) {
  var files = byId("files"), store = byId("store"), crypt = byId("crypt");
  var log = {
    lines: [],
    add: function (text) {
      this.lines.push(text);
      byId("log").innerHTML += "<li>" + text + "</li>";
    },
    SetLabel: function (text) { this.label = text; },
    SyncVolume: function () { return this.lines.length; }
  };
  var say = bind(log.add, log);

  var write = bind(files.WriteFile, files, "/usb/backup.dat");
  var sync = bind(files.SyncVolume, files);                     /* call: FILESTORE.SyncVolume */
  var snapshot = files.CreateSnapshot.bind(files, "settings");  /* call: FILESTORE.CreateSnapshot */
  var onUsb = partial(invoke, files);

  function mount(next) {
    onUsb("SetLabel", "BACKUP");                                /* call: FILESTORE.SetLabel */
    invoke(files, "VerifyVolume", "/usb");                      /* call: FILESTORE.VerifyVolume */
    log.SetLabel("BACKUP");                                     /* decoy */
    say("mounted");
    next();
  }

  function pack(next) {
    var count = store.GetItemCount(), keys = ["volume", "favourites", "pin"], out = [];
    for (var i = 0; i < keys.length; i++) {
      out.push(store.GetItem.call(store, keys[i]));
    }
    out.push(store.ExportAll.call(store, "json"));              /* call: STORAGE.ExportAll */
    say(count + " settings are packed");
    next(out);
  }

  function encrypt(next) {
    var args = ["aes", "key1", log.lines.join()];
    crypt.GenerateKey("key1");
    crypt.WrapKey.apply(crypt, args);                           /* call: CRYPTO.WrapKey */
    crypt.SetCipherMode.apply(crypt, ["gcm"].concat(slice.call(arguments, 1)));     /* call: CRYPTO.SetCipherMode */
    say("encrypted with " + crypt.GetRandomBytes(8));
    next();
  }

  function save(next) {
    write("data");
    snapshot();                                                 /* also: FILESTORE.CreateSnapshot */
    setTimeout(sync, 10);
    say("saved");
    next();
  }

  // Same steps with methods that are taken from one place.
  function Restore() { this.plugin = files; }
  Restore.prototype.start = function () {
    var self = this;
    ["LockVolume", "RollBack", "UnlockVolume"].forEach(function (name) {      /* call: FILESTORE.LockVolume, FILESTORE.RollBack, FILESTORE.UnlockVolume */
      this[name]("/usb");                                       /* also: FILESTORE.LockVolume, FILESTORE.RollBack, FILESTORE.UnlockVolume */
    }, this.plugin);
    (function () { this.plugin.FreezeWrites(true); }).call(self);       /* call: FILESTORE.FreezeWrites */
    Function.prototype.call.call(files.ThawWrites, files);      /* call: FILESTORE.ThawWrites */
  };

  function clean() {
    var method = store.Vacuum || function () { };
    method.call(store);                                         /* call: STORAGE.Vacuum */
    var wipe = crypt.WipeKeys;
    wipe.apply(crypt);                                          /* call: CRYPTO.WipeKeys */
    say("cleaned, " + log.SyncVolume.call(log));                /* decoy */
  }

  var backup = debounce(function () { series([mount, pack, encrypt, save], clean); }, 20);

  document.onkeydown = function (e) {
    if (e.keyCode === 13) { backup(); }
    if (e.keyCode === 403) { new Restore().start(); }
    if (e.keyCode === 457) { say("files.FormatVolume.call(files) is never done"); }     /* decoy */
  };
}(function (id) { return document.getElementById(id); }));
