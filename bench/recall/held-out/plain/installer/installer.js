var Installer = {
  step: 0,
  option: 0,
  language: "en",
  scanTimer: null,
  answers: {},

  steps: ["language", "country", "aerial", "network", "scan", "account", "done"],

  options: {
    language: ["en", "de"],
    country: ["NL", "DE", "AT", "CH"],
    aerial: ["air", "cable", "satellite"],
    network: ["wired", "wireless", "none"],
    scan: [],
    account: ["later", "now"],
    done: []
  },

  start: function () {
    var self = this;
    this.tuner = document.getElementById("tuner");
    this.scan = document.getElementById("scan");
    this.locale = document.getElementById("locale");
    this.network = document.getElementById("network");
    this.account = document.getElementById("account");
    this.power = document.getElementById("power");
    this.power.DisableAutoOff();                        /* call: POWER.DisableAutoOff */
    this.power.SetLedMode("blink");                     /* call: POWER.SetLedMode */
    this.locale.ResetToFactory();                       /* call: LOCALE.ResetToFactory */
    document.onkeydown = function (e) { self.key(e.keyCode); };
    this.show();
  },

  text: function (name) {
    return TEXTS[this.language][name];
  },

  show: function () {
    var name = this.steps[this.step], list = this.options[name], html = "";
    document.getElementById("title").innerHTML = this.text(name);
    for (var i = 0; i < list.length; i++) {
      html += "<div class='option" + (i === this.option ? " on" : "") + "'>" + list[i] + "</div>";
    }
    document.getElementById("body").innerHTML = html;
    document.getElementById("hint").innerHTML = this.text("hint");
    if (name === "scan") {
      this.startScan();
    } else if (name === "done") {
      this.finish();
    }
  },

  setLanguage: function (language) {
    this.language = language;
    this.locale.SetLanguage(language);
    this.locale.SetFallbackLanguage("en");              /* call: LOCALE.SetFallbackLanguage */
    this.locale.SetMenuLanguage(language);              /* call: LOCALE.SetMenuLanguage */
  },

  setCountry: function (country) {
    this.locale.SetCountry(country);
    this.locale.LoadFrequencyPlan(country);             /* call: LOCALE.LoadFrequencyPlan */
    this.tuner.SetRegion(country);                      /* call: TUNER.SetRegion */
    if (country === "NL") {
      this.tuner.SetLcnMode(1);                         /* call: TUNER.SetLcnMode */
    }
  },

  setAerial: function (kind) {
    this.tuner.SetSource(kind);
    if (kind === "satellite") {
      this.tuner.SetLnbFrequency(9750, 10600);          /* call: TUNER.SetLnbFrequency */
      this.tuner.SetToneBurst("A");                     /* call: TUNER.SetToneBurst */
    } else if (kind === "cable") {
      this.tuner.SetNetworkId(999);                     /* call: TUNER.SetNetworkId */
    } else {
      this.tuner.SetAntennaPower(1);                    /* call: TUNER.SetAntennaPower */
    }
  },

  setNetwork: function (kind) {
    if (kind === "wired") {
      this.network.EnableEthernet(true);                /* call: NETWORK.EnableEthernet */
    } else if (kind === "wireless") {
      this.network.EnableWifi(true);                    /* call: NETWORK.EnableWifi */
      this.network.StartWps();                          /* call: NETWORK.StartWps */
    }
    if (kind !== "none") {
      this.network.Connect();
      this.network.CheckReachable("tv.example");
      this.network.SetTimeServer("ntp.example");        /* call: NETWORK.SetTimeServer */
    }
  },

  startScan: function () {
    var self = this;
    this.scan.SetScanRange(470, 690);
    this.scan.SetScanMode("full");                      /* call: TUNERSCAN.SetScanMode */
    this.scan.SkipEncrypted(1);                         /* call: TUNERSCAN.SkipEncrypted */
    this.scan.Start();
    clearInterval(this.scanTimer);
    this.scanTimer = setInterval(function () { self.progress(); }, 50);
    this.progress();
  },

  progress: function () {
    var n = this.scan.GetProgress(), found = this.scan.GetFoundCount();
    document.getElementById("body").innerHTML = n + "% (" + found + ", " + this.scan.GetRadioCount() + ")";     /* call: TUNERSCAN.GetRadioCount */
    if (n >= 100) { this.stopScan(); }
  },

  stopScan: function () {
    clearInterval(this.scanTimer);
    this.scan.Stop();
    this.scan.SaveResults();
    this.scan.SortResults("lcn");                       /* call: TUNERSCAN.SortResults */
  },

  setAccount: function (when) {
    if (when === "now") {
      this.account.SignIn();
      this.account.ShowTermsOfUse();                    /* call: ACCOUNT.ShowTermsOfUse */
    } else {
      this.account.CreateGuest();                       /* call: ACCOUNT.CreateGuest */
    }
    this.account.SetMarketingConsent(0);                /* call: ACCOUNT.SetMarketingConsent */
  },

  finish: function () {
    this.power.SetLedMode("on");                        /* also: POWER.SetLedMode */
    this.power.SaveInstallState(1);                     /* call: POWER.SaveInstallState */
    summary.CreateGuest();                              /* decoy */
    summary.SetScanMode(this.answers.scan);             /* decoy */
  },

  apply: function () {
    var name = this.steps[this.step], value = this.options[name][this.option];
    this.answers[name] = value;
    if (name === "language") { this.setLanguage(value); }
    if (name === "country") { this.setCountry(value); }
    if (name === "aerial") { this.setAerial(value); }
    if (name === "network") { this.setNetwork(value); }
    if (name === "scan") { this.stopScan(); }
    if (name === "account") { this.setAccount(value); }
    if (name !== "done") {
      this.step++;
      this.option = 0;
    }
    this.show();
  },

  // Engineers choose step and option with digits.
  quick: function (digit) {
    if (digit < this.steps.length) {
      var list;
      this.step = digit;
      list = this.options[this.steps[digit]];
      for (this.option = 0; this.option < list.length; this.option++) {
        this.preview(this.steps[digit], list[this.option]);
      }
      this.option = 0;
      this.show();
    }
  },

  preview: function (name, value) {
    if (name === "country") { this.setCountry(value); }
    if (name === "aerial") { this.setAerial(value); }
    if (name === "network") { this.setNetwork(value); }
    if (name === "account") { this.setAccount(value); }
  },

  key: function (code) {
    var list = this.options[this.steps[this.step]];
    if (code === 13) { this.apply(); }
    else if (code === 38) { this.option = Math.max(0, this.option - 1); this.show(); }
    else if (code === 40) { this.option = Math.min(list.length - 1, this.option + 1); this.show(); }
    else if (code === 461) { this.step = Math.max(0, this.step - 1); this.option = 0; this.show(); }
    else if (code === 413) { this.stopScan(); }
    else if (code >= 48 && code <= 57) { this.quick(code - 48); }
    else if (code === 457) { document.getElementById("hint").innerHTML = "scan.SetScanMode(quick) takes a minute"; }    /* decoy */
  }
};

// What was chosen, for the last page
var summary = {
  guest: false,
  CreateGuest: function () { this.guest = true; },
  SetScanMode: function (m) { this.mode = m; }
};
/* Old: Installer.tuner.SetBlindScan(1); */             /* decoy */
