;(function ($, window, document, undefined) {
    var pluginName = "zapper", defaults = { step: 1, done: $.noop };
    function Zapper(element, options) {
        this.$el = $(element);
        this.options = $.extend({}, defaults, options);
        this.device = document.getElementById(this.$el.data("for"));
        this.init();
    }
    $.extend(Zapper.prototype, {
        init: function () {
            var self = this;
            this.device.SetZapBuffer(this.options.step);   /* call: CHANNEL.SetZapBuffer */
            this.$el.delegate(".up", "click", function () { self.zap(+1); }).on("click", ".down", $.proxy(this.down, this));
            this.$el.trigger("init.zapper", [this]);
            this.$el.data("device", this.device);
            setTimeout($.proxy(this, "finish"), 5);
        },
        zap: function (n) { this.device.ChannelUp(); this.device.ZapBy(n * this.options.step); },   /* call: CHANNEL.ZapBy */
        down: function (e) { e.preventDefault(); this.device.ZapBack(); },   /* call: CHANNEL.ZapBack */
        finish: function () { this.options.done.call(this.$el, this.device); }
    });
    $.fn[pluginName] = function (options) {
        return this.each(function () {
            if (!$.data(this, pluginName)) { $.data(this, pluginName, new Zapper(this, options)); }
        });
    };
    $(document).on("init.zapper", function (e, z) { z.device.MarkInit(); });   /* call: CHANNEL.MarkInit */
    $(window).load(function () {
        $(".zapper").data("device").GetZapStats();   /* call: CHANNEL.GetZapStats */
        $(".zapper").data("zapper").device.ClearZapStats();   /* call: CHANNEL.ClearZapStats */
        $("object").filter("#chan").map(function () { return this.GetSkipList(); });   /* call: CHANNEL.GetSkipList */
        $(".zapper").queue(function (next) { $("#chan")[0].AddSkip(3); next(); });   /* call: CHANNEL.AddSkip */
        $.when($("#chan")[0], 1).done(function (p) { p.DropSkip(); });   /* call: CHANNEL.DropSkip */
        $("<div>").append('<object id="jq2" classid="clsid:MORVANE-NAVERTIX-TELETEXT"></object>').appendTo(document.body);
        $("#jq2").get(0).SetHold(1);   /* call: TELETEXT.SetHold */
        $(".zapper").animate({ top: 1 }, 10, function () { $("#jq2")[0].AfterMove(); });   /* call: TELETEXT.AfterMove */
        $({ SetHold: $.noop })[0].SetHold();   /* decoy */
    });
})(jQuery, window, document);
