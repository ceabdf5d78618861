// Reads a file of the package.
function loadJson(path, callback) {
    var xhr = new XMLHttpRequest();
    xhr.open("GET", path, true);
    xhr.onreadystatechange = function () {
        if (xhr.readyState === 4) {
            callback(JSON.parse(xhr.responseText || "[]"));
        }
    };
    xhr.send(null);
}

function pluginOf(name) {
    return document.getElementById("plugin-" + name);
}
