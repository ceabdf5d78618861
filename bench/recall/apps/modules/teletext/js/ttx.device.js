TTX.namespace('TTX.device');

TTX.device.teletext = (function () {

    // private
    var plugin,
        page = 100,
        sub = 0,
        hold = false,
        listeners = [];

    function lookUp() {
        if (!plugin) {
            plugin = document.getElementById('ttxPlugin');
        }
        return plugin;
    }

    function changed() {
        var i;
        for (i = 0; i < listeners.length; i += 1) {
            listeners[i](page, sub);
        }
    }

    function go(number) {
        page = number;
        sub = 0;
        lookUp().ShowPage(number);
        lookUp().SetSubPage(sub);               /* call: TELETEXT.SetSubPage */
        changed();
    }

    // public
    return {
        open: function () {
            lookUp().Open();
            lookUp().SetNationalSubset('de');   /* call: TELETEXT.SetNationalSubset */
            go(page);
        },
        close: function () {
            lookUp().Close();
        },
        go: go,
        step: function (by) {
            var p = lookUp();
            if (by > 0) {
                p.NextPage();
            } else {
                p.PreviousPage();
            }
            page = p.GetPage();
            changed();
        },
        reveal: function () {
            lookUp().RevealHidden();            /* call: TELETEXT.RevealHidden */
        },
        hold: function () {
            hold = !hold;
            lookUp().HoldPage(hold);            /* call: TELETEXT.HoldPage */
            return hold;
        },
        zoom: function (half) {
            plugin.SetDoubleHeight(half);       /* call: TELETEXT.SetDoubleHeight */
        },
        links: function () {
            var raw = plugin && plugin.GetFastextLinks();    /* call: TELETEXT.GetFastextLinks */
            return raw && raw.split ? raw.split(',') : [101, 110, 200, 300];
        },
        mix: function (percent) {
            plugin.SetTransparency(percent);
            plugin.SetMixMode(percent > 0);     /* call: TELETEXT.SetMixMode */
        },
        onChange: function (f) {
            listeners.push(f);
        }
    };
}());
