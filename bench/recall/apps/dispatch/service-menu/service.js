(function () {
    'use strict';

    var menu, row = 0;

    function $(id) { return document.getElementById(id); }

    function get(url, callback) {
        var xhr = new XMLHttpRequest();
        xhr.onload = function () { callback(JSON.parse(xhr.responseText)); };
        xhr.open('GET', url);
        xhr.send();
    }

    function draw() {
        $('menu').textContent = menu.title + '\n' + menu.items.map(function (item, i) {
            return (i === row ? '> ' : '  ') + item.label + ': ' + item.values[item.index || 0];
        }).join('\n');
    }

    function change(by) {
        var item = menu.items[row], n = item.values.length;
        item.index = ((item.index || 0) + by + n) % n;
        $(item.plugin)[item.set](item.values[item.index]);   /* call: DISPLAY.SetWhiteBalance, DISPLAY.ShowTestPattern, TUNER.SetLnbVoltage, TUNER.SendDiseqc */
        draw();
    }

    function command(name) {
        return $('ext').Execute(name, 0);                    /* call: KOB.DumpRegisters, KOB.ClearErrorLog, KOB.EnterFactoryMode, KOB.LeaveFactoryMode */
    }

    get('config/menu.json', function (config) {
        menu = config;
        config.startup.forEach(function (line) {
            var dot = line.indexOf('.');
            var plugin = $(line.slice(0, dot));
            plugin[line.slice(dot + 1)](1);                  /* call: DISPLAY.LockMenu, TUNER.EnableDiagnostics */
        });
        draw();
    });

    // What the menu may not do: $('disp').ShowTestPattern('burn')          /* decoy */
    var shadow = {
        values: {},
        SetWhiteBalance: function (v) { this.values.white = v; },
        LockMenu: function () { this.locked = true; }
    };
    ['SetWhiteBalance', 'LockMenu'].forEach(function (m) {
        shadow[m]('warm');                                   /* decoy */
    });

    document.addEventListener('keydown', function (e) {
        if (!menu) { return; }
        if (e.keyCode === 38 || e.keyCode === 40) {
            row = (row + (e.keyCode === 38 ? -1 : 1) + menu.items.length) % menu.items.length;
            draw();
        } else if (e.keyCode === 37 || e.keyCode === 39) {
            change(e.keyCode - 38);
        } else if (e.keyCode >= 49 && e.keyCode < 49 + menu.items.length) {
            row = e.keyCode - 49;
            change(1);
        } else if (menu.commands[e.keyCode]) {
            command(menu.commands[e.keyCode]);
        } else if (e.keyCode === 27) {
            $('disp').UnlockMenu();                          /* call: DISPLAY.UnlockMenu */
            command('LeaveFactoryMode');                     /* also: KOB.LeaveFactoryMode */
        }
    });
}());
