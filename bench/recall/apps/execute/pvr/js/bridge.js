/* Bridge to the box: everything goes through Execute of the extension plug-in. */
var Bridge = (function () {
    var kob = document.getElementById("kob");
    var pending = [];
    var busy = false;

    function raw(name) {
        var args = Array.prototype.slice.call(arguments);
        return kob.Execute.apply(kob, args);                    /* call: KOB.PVR_Mount, KOB.PVR_Unmount */
    }

    function run(command, value) {
        var answer = kob.Execute(command, value);               /* call: KOB.PVR_List, KOB.PVR_Protect, KOB.PVR_Rename, KOB.PVR_Trim */
        if (answer === -1) {
            toast("Command " + command + " failed");
        }
        return answer;
    }

    function later(command, value) {
        pending.push({ command: command, value: value });
        flush();
    }

    function flush() {
        if (busy || !pending.length) {
            return;
        }
        busy = true;
        var next = pending.shift();
        kob.Execute(next.command, next.value);                  /* call: KOB.PVR_Index, KOB.PVR_Thumbnail */
        setTimeout(function () {
            busy = false;
            flush();
        }, 1);
    }

    function toast(text) {
        document.getElementById("toast").innerHTML = text;
    }

    return { raw: raw, run: run, later: later, toast: toast, version: kob.GetVersion() };
}());
