// declare("name.of.Class", [Base, Mixin...], {...}): classes with mix-ins, statics and an initializer chain.
function declare(name, bases, members) {
	bases = bases ? (bases instanceof Array ? bases : [bases]) : [];

	function Constructor() {
		var chain = [], c = Constructor;
		(function collect(type) {
			(type._bases || []).forEach(collect);
			if (type._initialize) {
				chain.push(type._initialize);
			}
		})(c);
		for (var i = 0; i < chain.length; i++) {
			chain[i].apply(this, arguments);
		}
	}

	var proto = Constructor.prototype;
	bases.forEach(function (base) {
		for (var k in base.prototype) {
			proto[k] = base.prototype[k];
		}
	});
	for (var m in members) {
		if (m === "statics") {
			for (var s in members.statics) {
				Constructor[s] = members.statics[s];
			}
		} else if (m !== "initialize") {
			var inherited = proto[m];
			proto[m] = members[m];
			if (typeof inherited === "function") {
				proto[m].inherited = inherited;
			}
		}
	}
	Constructor._bases = bases;
	Constructor._initialize = members.initialize;
	proto.declaredClass = name;

	var parts = name.split("."), scope = window;
	while (parts.length > 1) {
		scope = scope[parts[0]] = scope[parts.shift()] || {};
	}
	return (scope[parts[0]] = Constructor);
}
