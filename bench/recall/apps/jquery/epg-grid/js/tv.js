// The plug-ins, by the name in their data attribute: TV.epg, TV.channel, ...
var TV = {};

$('[data-plugin]').each(function () {
    TV[$(this).data('plugin')] = this;
});

TV.ready = $.Deferred();

TV.start = function () {
    TV.epg.Open();
    TV.epg.SetUpdateMode('lazy');                     /* call: EPG.SetUpdateMode */
    TV.channel.SetListOrder('lcn');                   /* call: CHANNEL.SetListOrder */
    TV.ready.resolve(TV);
};
