/*
 * The settings that can be changed, and how each is applied.
 * A setting has a name, a label, a list of values and an index in it.
 */
var settings = [];

function addSetting(name, label, values, apply) {
    settings.push({ name: name, label: label, values: values, index: 0, apply: apply });
}

function restore() {
    var storage = document.getElementById("storage");
    storage.SelectNamespace("sound");                           /* call: STORAGE.SelectNamespace */
    for (var i = 0; i < settings.length; i++) {
        var stored = storage.GetItem("sound." + settings[i].name);
        var index = parseInt(stored, 10);
        settings[i].index = index >= 0 && index < settings[i].values.length ? index : 0;
        applySetting(settings[i]);
    }
}

function save() {
    var storage = document.getElementById("storage");
    for (var i = 0; i < settings.length; i++) {
        storage.SetItem("sound." + settings[i].name, settings[i].index);
    }
    storage.CommitNow();                                        /* call: STORAGE.CommitNow */
}

function applySetting(setting) {
    setting.apply(setting.values[setting.index]);
}

function resetAll() {
    for (var i = 0; i < settings.length; i++) {
        settings[i].index = 0;
        applySetting(settings[i]);
    }
    document.getElementById("storage").PurgeNamespace("sound"); /* call: STORAGE.PurgeNamespace */
}
