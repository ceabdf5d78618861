function $(id) { return document.getElementById(id); }

function inherit(child, parent) {
	var F = function () {};
	F.prototype = parent.prototype;
	child.prototype = new F();
	child.prototype.constructor = child;
	child.parent = parent.prototype;
}

function formatTime(ms) {
	var s = Math.floor(ms / 1000);
	return Math.floor(s / 60) + ":" + (s % 60 < 10 ? "0" : "") + s % 60;
}

if (!Function.prototype.bind) {
	Function.prototype.bind = function (self) {
		var f = this, args = [].slice.call(arguments, 1);
		return function () { return f.apply(self, args.concat([].slice.call(arguments))); };
	};
}
