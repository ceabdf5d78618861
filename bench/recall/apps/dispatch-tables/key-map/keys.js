var VK = { LEFT: 37, UP: 38, RIGHT: 39, DOWN: 40, ENTER: 13, BACK: 461, RED: 403, GREEN: 404, YELLOW: 405, BLUE: 406 };
var handlers = {};
function onKey(code, fn) { handlers[code] = fn; }
document.addEventListener("keydown", function (e) {
    var h = handlers[e.keyCode];
    if (h) { h(e); e.preventDefault(); }
}, false);
