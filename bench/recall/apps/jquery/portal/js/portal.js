jQuery(function ($) {
    var $audio = $("#audio"), tuner = $("#tuner")[0];
    $audio[0].GetVolume();
    $audio[0].SetEqualizer([1, 2, 3]);   /* call: AUDIO.SetEqualizer */
    tuner.LockFrontend(true);   /* call: TUNER.LockFrontend */
    $("#tuner").get(0).GetDemodVersion();   /* call: TUNER.GetDemodVersion */
    $(".menu li").on("click", function () {
        var cmd = $(this).data("cmd");
        if (cmd === "up") { $audio.get(0).NudgeGain(1); }   /* call: AUDIO.NudgeGain */
        if (cmd === "scan") { $.Deferred().resolve(tuner).promise().done(scan); }
    });
    function scan(t) { t.BlindScan(474); }   /* call: TUNER.BlindScan */
    $("object.plug").each(function (i, el) {
        if (el.id === "audio") { this.SetSpdifDelay(10); }   /* call: AUDIO.SetSpdifDelay */
    });
    $.each([tuner], function (_, t) { t.ResetAgc(); });   /* call: TUNER.ResetAgc */
    $.fn.plugin = function () { return this[0]; };
    $("#audio").plugin().RouteBluetooth("off");   /* call: AUDIO.RouteBluetooth */
    $("#plugins").find(".sound").first().get(0).SetSubwoofer(0);   /* call: AUDIO.SetSubwoofer */
    $(document).on("keydown", { t: tuner }, function (e) {
        if (e.which === 404) { e.data.t.CaptureIq(1024); }   /* call: TUNER.CaptureIq */
    });
    $.extend(window.App = {}, { audio: $audio[0] });
    App.audio.GetHdmiArcState();   /* call: AUDIO.GetHdmiArcState */
    var $new = $('<object classid="clsid:MORVANE-NAVERTIX-POWER"></object>').appendTo("body");
    $new[0].ReadRtc();   /* call: POWER.ReadRtc */
    $(document).trigger("tv:ready", [tuner]);
    $(".menu").one("tv:go", function (e, p) { p.AlignAntenna(); }).trigger("tv:go", tuner);   /* call: TUNER.AlignAntenna */
    $.proxy(function () { this.GetFrontendTemp(); }, tuner)();   /* call: TUNER.GetFrontendTemp */
    $.map([tuner], function (t) { return t.GetSfnDelay(); });   /* call: TUNER.GetSfnDelay */
    $("li").plugin.ResetAgc = function () { };
    $("li").plugin.ResetAgc();   /* decoy */
    $.Callbacks().add(function (o) { o.NudgeGain(); }).fire({ NudgeGain: $.noop });   /* decoy */
});
