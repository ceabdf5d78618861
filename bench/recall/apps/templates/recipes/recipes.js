var app = (function (_, Mustache) {

    var page = document.getElementById('page'), current = null;

    var recipes = [
        { title: 'Pancakes', minutes: 20, steps: ['Mix flour and milk', 'Fry'] },
        { title: 'Bean stew', minutes: 45, steps: ['Soak the beans', 'Cook', 'Season'] }
    ];

    var listTemplate = _.template(document.getElementById('tpl-list').innerHTML);
    var recipeTemplate = document.getElementById('tpl-recipe').innerHTML;

    // Small things are written in the code.
    var share = _.template('<a onclick="app.photo(\'<%= title %>\')">Share <%= title %></a><% cam.SetFrameOverlay(title) %>');   /* text: CAMERA.SetFrameOverlay */
    var hint = _.template('Write cam.SetFrameOverlay(<%= n %>) to try.');   /* decoy */

    function plugins() {
        return _.reduce(['timer', 'speech', 'cam'], function (all, id) {
            all[id] = document.getElementById(id);
            return all;
        }, {});
    }

    function list() {
        current = null;
        page.innerHTML = listTemplate(_.extend({ recipes: recipes }, plugins()));
    }

    function open(index) {
        var p = plugins();
        current = recipes[index];
        page.innerHTML = Mustache.render(recipeTemplate, current) + share(_.defaults({ title: current.title }, p));
        p.timer.SetCountdownLabel(current.title);   /* call: CLOCK.SetCountdownLabel */
        page.title = hint({ n: index });
    }

    function read() {
        var speech = plugins().speech;
        _.chain(current.steps).map(function (s, i) { return (i + 1) + '. ' + s; }).each(function (line) {
            speech.QueueSpeech(line);   /* call: AUDIO.QueueSpeech */
        });
        _.invoke(_.values(_.pick(plugins(), 'speech')), 'FlushSpeech');   /* call: AUDIO.FlushSpeech */
    }

    function photo(title) {
        var cam = _.property('cam')(plugins());
        cam.Open();
        cam.TakePicture();
        cam.ShareLastPicture(title);   /* call: CAMERA.ShareLastPicture */
    }

    var press = _.debounce(function (code) {
        plugins().cam.SetShutterSound(code);   /* call: CAMERA.SetShutterSound */
    }, 10);

    document.onkeydown = function (e) {
        if (e.keyCode >= 49 && e.keyCode <= 50) {
            open(e.keyCode - 49);
            read();
        } else if (e.keyCode === 403 && current) {
            photo(current.title);
        } else if (e.keyCode === 404) {
            press(e.keyCode);
        } else if (e.keyCode === 27) {
            list();
        }
    };

    list();
    open(1);
    read();
    return { open: open, read: read, back: list, photo: photo };
}(_, Mustache));
