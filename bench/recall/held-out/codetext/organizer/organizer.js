var Organizer = {
  today: new Date(2012, 4, 1),
  month: 4,
  year: 2012,
  expressions: {
    birthday: "calendar.MarkBirthday(day)",             /* text: CALENDAR.MarkBirthday */
    holiday: "calendar.MarkHoliday(day, 'public')"      /* text: CALENDAR.MarkHoliday */
  },

  open: function () {
    this.draw();
    setTimeout("document.getElementById('clock').StartChime(60)", 20);      /* text: CLOCK.StartChime */
    setInterval("Organizer.tick()", 100);
    // In an older version: setTimeout("clock.StartCuckoo()", 10)     /* decoy */
    this.rules();
  },

  tick: function () {
    var clock = document.getElementById("clock");
    clock.GetTime();
    document.title = "Organizer " + clock.GetWeekNumber();      /* call: CLOCK.GetWeekNumber */
  },

  // Rules for special days, from the settings of the user who may write his own.
  rules: function () {
    var day = 1, calendar = document.getElementById("calendar");
    for (var name in this.expressions) {
      eval(this.expressions[name]);                     /* also: CALENDAR.MarkBirthday, CALENDAR.MarkHoliday */
    }
    var own = new Function("cal", "day", "return cal.GetFreeSlots(day) > 0");     /* text: CALENDAR.GetFreeSlots */
    if (own(calendar, 2)) {                             /* also: CALENDAR.GetFreeSlots */
      calendar.SuggestSlot(2);                          /* call: CALENDAR.SuggestSlot */
    }
  },

  draw: function () {
    var names = ["January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
      "November", "December"], html = "", day = 1, days = new Date(this.year, this.month + 1, 0).getDate();
    document.getElementById("month").innerHTML = names[this.month] + " " + this.year;
    while (day <= days) {
      html += "<tr>";
      for (var i = 0; i < 7; i++, day++) {
        html += day <= days ? "<td onclick='Organizer.show(" + day + ")'>" + day + "</td>" : "<td></td>";
      }
      html += "</tr>";
    }
    document.getElementById("grid").innerHTML = html;
  },

  show: function (day) {
    var box = document.getElementById("event");
    this.day = day;
    box.innerHTML = "<b>" + day + "</b> <input type='button' value='Share' onclick='calendar.ShareEntry(" + day + ")'>" +     /* text: CALENDAR.ShareEntry */
      "<input type='button' value='Help' onclick='Organizer.help.ShareEntry()'>";     /* decoy */
  },

  help: { ShareEntry: function () { return "Shares an entry with the family"; } },

  add: function () {
    var cal = document.getElementById("calendar");
    cal.AddEntry(this.day || 1, "Dentist");
    cal.SetEntryColor(this.day || 1, "red");            /* call: CALENDAR.SetEntryColor */
    cal.SetRecurrence(this.day || 1, "FREQ=YEARLY");    /* call: CALENDAR.SetRecurrence */
  },

  key: function (code) {
    if (code == 37) { this.month--; if (this.month < 0) { this.month = 11; this.year--; } this.draw(); }
    if (code == 39) { this.month++; if (this.month > 11) { this.month = 0; this.year++; } this.draw(); }
    if (code == 13) { this.show(7); }
    if (code == 403) { this.add(); }
    if (code == 404) { this.lunar(); }
    return true;
  },

  lunar: function () {
    var s = document.createElement("script");
    s.type = "text/javascript";
    s.text = "var moon = document.getElementById('clock').GetMoonPhase();";     /* text: CLOCK.GetMoonPhase */
    document.getElementsByTagName("head")[0].appendChild(s);
  }
};
