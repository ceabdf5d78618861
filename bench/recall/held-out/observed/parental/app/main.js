(function () {
  var rules = new Rules();
  var message = document.getElementById("message");
  var security = Plugins.getInstance().get("security");
  var entered = "";

  rules.observe(new Enforcer()).observe(diary).observe(function (what, value) {
    message.textContent = what + ": " + value;
    security.WriteJournal(what);                        /* call: SECURITY.WriteJournal */
    draw();
  });

  function draw() {
    var html = "<tr><th>Rating</th><td>" + rules.rating + "</td></tr>";
    for (var n = 1; n <= 5; n++) {
      html += "<tr><th>Channel " + n + "</th><td>" + (rules.locked[n] ? "locked" : "") + "</td></tr>";
    }
    document.getElementById("table").innerHTML = html;
  }

  function onPin(digits) {
    if (Pin.getInstance().check(digits)) {
      security.Open();
      security.ElevateSession("parent");                /* call: SECURITY.ElevateSession */
      rules.setHours(7, 20);
    } else if (Pin.attempts > 3) {
      Pin.LockOut(5);                                   /* decoy */
    }
  }

  document.addEventListener("keydown", function (e) {
    var code = e.keyCode;
    if (code >= 48 && code <= 57) {
      entered += code - 48;
      if (entered.length === 4) { onPin(entered); entered = ""; }
    } else if (code === 38 || code === 40) {
      rules.setRating(rules.rating + (code === 38 ? 1 : -1));
    } else if (code >= 403 && code <= 406) {
      rules.toggle(code - 402);
    } else if (code === 457) {
      var locale = Plugins.getInstance().get("locale");
      message.textContent = locale.GetRatingNames() + " (security.ExportJournal)";      /* call: LOCALE.GetRatingNames */
    } else if (code === 461) {
      window.Plugins.getInstance().get("security").DropPrivileges();      /* call: SECURITY.DropPrivileges */
    }
  });
  draw();
  /* channel.HideLocked(true) may come back */          /* decoy */
}());
