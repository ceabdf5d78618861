(function () {
    var security = document.getElementById('security');
    var crypto = document.getElementById('crypto');
    var guarded = new Guarded(security, ['CheckPin', 'LockOut', 'UnlockAll']);
    var keys = new Guarded(crypto, ['GenerateKey', 'WipeKeys']);
    var partner = new Strict(security);
    var vault = new Vault('family');
    var tries = 0;

    function check(pin) {
        tries++;
        if (guarded.Call('CheckPin', pin) && pin) {             /* decoy */
            vault.Unseal(pin);                                  /* decoy */
            tries = 0;
        } else if (tries > 1) {
            guarded.Call('LockOut', 30);                        /* also: SECURITY.LockOut */
            security.RaiseTamper(tries);                        /* call: SECURITY.RaiseTamper */
        }
        Journal.Write('tried ' + tries);                        /* decoy */
    }

    // The page of a partner asks by name. What is not allowed goes to the journal.
    var requests = [['GetRatingLimit'], ['ExportCertificates', 'all'], ['DumpSecrets']];
    requests.forEach(function (request) {
        partner.Call(request[0], request[1]);                   /* decoy */
    });
    guarded.Call('ResetPin', '0000');                           /* decoy */
    partner.Call('UnlockAll');                                  /* decoy */
    keys.Call('ExportKey', 1);                                  /* decoy */

    document.getElementById('ok').onclick = function () {
        check(document.getElementById('pin').value);
    };

    document.onkeydown = function (e) {
        switch (e.keyCode) {
        case 13:
            invoke(vault, 'Unseal', '1234');                    /* decoy */
            invoke(vault, 'Deposit', 'letter');                 /* decoy */
            break;
        case 403:
            document.title = ask(security, 'ReadCounter', 0) + ' ' +        /* also: SECURITY.ReadCounter */
                             ask(security, 'GetRatingLimit', 0);
            break;
        case 404:
            document.title = invoke(vault, 'ReadCounter');      /* decoy */
            invoke(Journal, 'Rotate');                          /* decoy */
            invoke(Journal, 'Seal');                            /* decoy */
            break;
        case 405:
            vault.WipeKeys();                                   /* decoy */
            keys.Call('WipeKeys');                              /* also: CRYPTO.WipeKeys */
            break;
        case 406:
            guarded.Call('UnlockAll');                          /* also: SECURITY.UnlockAll */
            security.Seal('case');                              /* call: SECURITY.Seal */
            vault.Seal();                                       /* decoy */
            break;
        case 27:
            crypto.ZeroMemory();                                /* call: CRYPTO.ZeroMemory */
            vault.Withdraw('letter');                           /* decoy */
            break;
        }
    };
    crypto.SelfTest();                                          /* call: CRYPTO.SelfTest */
}());
