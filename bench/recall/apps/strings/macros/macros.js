(function (global) {
    'use strict';

    var macros = {}, names = [], list = document.getElementById('list');

    function compile(name, code) {
        /*jshint evil:true */
        macros[name] = new Function('disp', 'aud', 'clk', code);
        names.push(name);
    }

    function run(name) {
        macros[name](document.getElementById('disp'), document.getElementById('aud'), document.getElementById('clk'));
    }

    function draw() {
        list.innerHTML = names.map(function (n) {
            return '<li data-macro="' + n + '">' + n + '</li>';
        }).join('');
    }

    function fromPage(name) {
        var node = document.getElementById('macro-' + name);
        if (node) {
            compile(name, node.textContent || node.text);
        }
    }

    function fromLibrary() {
        var xhr = new XMLHttpRequest();
        xhr.open('GET', 'library.txt');
        xhr.onload = function () {
            xhr.responseText.split(/\n\n/).forEach(function (block) {
                var end = block.indexOf('\n'), name = block.slice(0, end).replace('name: ', '');
                compile(name, block.slice(end + 1));
            });
            draw();
        };
        xhr.send();
    }

    // Macros that are built in. A macro can call others by run().
    var builtIn = {
        cinema: 'disp.SetLetterbox(1);' +                                    /* text: DISPLAY.SetLetterbox */
                'aud.SetDialogLevel(3);',                                    /* text: AUDIO.SetDialogLevel */
        reset: ['disp.ResetPicture()', 'aud.ResetSound()', 'clk.CancelAlarm()'].join(';')   /* text: DISPLAY.ResetPicture, AUDIO.ResetSound */
    };

    global.runMacro = run;
    Object.keys(builtIn).forEach(function (name) { compile(name, builtIn[name]); });
    fromPage('evening');
    fromPage('morning');
    fromLibrary();
    draw();

    list.addEventListener('click', function (e) {
        var name = e.target.getAttribute('data-macro');
        if (name) {
            run(name);
        }
    });

    document.addEventListener('keydown', function (e) {
        var name = names[e.keyCode - 49];
        if (name) {
            global.setTimeout('runMacro("' + name + '")', 1);
        } else if (e.keyCode === 403) {
            var aud = document.getElementById('aud');
            aud.PlayConfirmTone();                                           /* call: AUDIO.PlayConfirmTone */
        } else if (e.keyCode === 404) {
            // What the viewer typed is run as it is.
            var text = document.getElementById('editor').value;
            if (text) {
                document.getElementById('aud')[text]();                      /* undecidable: AUDIO */
            }
        }
    });

    document.getElementById('editor').value = '';
    document.getElementById('editor').placeholder = 'disp.SetLetterbox(0); aud.SetDialogLevel(0)';   /* decoy */
}(window));
