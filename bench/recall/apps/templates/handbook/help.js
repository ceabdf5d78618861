// Texts of the help, by topic. They are shown as they are.
var HELP = {
    tuning: 'Press red. The set calls tuner.SetFrequency and tuner.LockPll for you.',              /* decoy */
    signal: "If the picture stands still: tuner.RestartDemod(), or call us.",                      /* decoy */
    scan: 'Do not switch off while scan.WriteFlash() runs: "scan.WriteFlash(true)" takes long.',   /* decoy */
    expert: [
        'var tuner = document.getElementById("tuner");',
        'tuner.PokeRegister(0x10, 1);',                                                            /* decoy */
        'tuner.DumpRegisters();'                                                                   /* decoy */
    ].join('\n')
};

/*
 * How the old handbook did it, for who wonders:
 *   tuner.SetDemodMode(2); scan.AbortAll();
 */
var Glossary = {
    terms: { mux: 'Several services on one frequency', plan: 'Frequencies that are tried' },
    Explain: function (term) { return this.terms[term] || '?'; },
    AddTerm: function (term, text) { this.terms[term] = text; }
};
