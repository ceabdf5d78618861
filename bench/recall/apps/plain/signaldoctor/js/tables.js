// Limits of the operators, from the installation handbook of 2013.
var LIMITS = {
    "DVB-C": { level: [47, 77], ber: 1e-4, mer: 30 },
    "DVB-T": { level: [39, 74], ber: 2e-4, mer: 24 },
    "DVB-S": { level: [47, 77], ber: 2e-4, mer: 11 }
};

var ADVICE = [
    { test: function (m) { return m.level < m.limits.level[0]; }, text: "The signal is weak: check the cable and the socket." },
    { test: function (m) { return m.level > m.limits.level[1]; }, text: "The signal is strong: remove the amplifier." },
    { test: function (m) { return m.mer < m.limits.mer; }, text: "There is noise on the line: look for a damaged plug." },
    { test: function (m) { return m.ber > m.limits.ber; }, text: "There are errors: turn the dish a little." }
];

function adviceFor(measurement) {
    for (var i = 0; i < ADVICE.length; i++) {
        if (ADVICE[i].test(measurement)) {
            return ADVICE[i].text;
        }
    }
    return "All is well.";
}
