var QUESTIONS = [
  { q: "Which is the longest river of Europe?", a: ["Danube", "Volga", "Rhine"], right: 1 },
  { q: "Who painted the water lilies?", a: ["Monet", "Manet", "Miro"], right: 0 },
  { q: "How many sides has a dodecagon?", a: ["10", "11", "12"], right: 2 }
];

$(function () {
  var remote = $("#remote")[0],
      account = $.tv.find("account"),
      $sound = $("object.sound");
  var at = 0, points = 0;

  remote.Open();
  remote.GrabColourKeys(true);                                 /* call: REMOTE.GrabColourKeys */

  function show() {
    var one = QUESTIONS[at % QUESTIONS.length];
    $("#question").text(one.q);
    $("#answers li").each(function (i) {
      $(this).text(one.a[i]).data("index", i);
    });
    $("#score").html("<b>" + points + "</b> points for " + account.GetUserName());
  }

  function answer(i, plugin) {
    var right = QUESTIONS[at % QUESTIONS.length].right === i;
    $sound.tv(right ? "PlayJingle" : "StopJingle", 3);         /* also: AUDIO.PlayJingle, AUDIO.StopJingle */
    plugin.BlinkLed(right ? "green" : "red");                  /* call: REMOTE.BlinkLed */
    points += right ? 10 : 0;
    at++;
    show();
  }

  $("#answers .nav").keynav({ select: answer, plugin: remote });

  $("#answers").on("click", "li", function () {
    answer($(this).data("index"), remote);
    $("#remote").tv("Beep", 440);                              /* also: REMOTE.Beep */
  });

  $.each({ account: account }, function (name, plugin) {
    plugin.LoadAvatars(name);                                  /* call: ACCOUNT.LoadAvatars */
  });

  $("#account").each(function () {
    this.SetGuestMode(false);                                  /* call: ACCOUNT.SetGuestMode */
  });

  $.ajax({ url: "http://quiz.example/questions", dataType: "json", timeout: 4000 })
    .done(function (list) { QUESTIONS = list; })
    .fail($.proxy(function () {
      this.ReportOffline("quiz");                              /* call: ACCOUNT.ReportOffline */
    }, account))
    .always(show);

  // While there is no network, a game of the last evening is gone on with.
  var lastGame = $.extend({}, { account: account, SaveHighScore: $.noop }, { points: 0 });
  lastGame.SaveHighScore(0);                                   /* decoy */

  $(document).keydown(function (e) {
    if (e.which === 403) {
      lastGame.account.SaveHighScore(points);                  /* call: ACCOUNT.SaveHighScore */
    } else if (e.which === 404) {
      $.tv.all().filter("#remote").get(0).SwapVolumeKeys(true);   /* call: REMOTE.SwapVolumeKeys */
    } else if (e.which === 405) {
      $sound.parent().find("object").last().prop("tagName");
      $("<p>").text("remote.SelfDestruct()").appendTo("body"); /* decoy */
    } else if (e.which === 406) {
      $.when(account).then(function (who) {
        who.ListFamilyMembers();                               /* call: ACCOUNT.ListFamilyMembers */
      });
    }
  });

  var tasks = $.map($.tv.all().toArray(), function (element) {
    return element.id === "sound" ? element : null;
  });
  setTimeout(function () { tasks[0].NormalizeLoudness(1); }, 10);   /* call: AUDIO.NormalizeLoudness */
});
