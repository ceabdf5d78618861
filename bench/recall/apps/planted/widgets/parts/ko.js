(function() { var p = document.getElementById("tvRemote"); p.GetKeyName(1); p.SetSniffer(p, -1); })();   /* call: REMOTE.SetSniffer */
