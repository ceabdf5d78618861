(function () {
    var hdmi = document.getElementById('hdmi');
    var power = document.getElementById('power');
    var note = document.getElementById('note');
    var toast = new Toast('toast'), list = new InputList('inputs');
    var active = 0;

    Bus.emit('hdmi:ready', hdmi);
    Bus.emit('power:ready', power);
    Bus.emit('ui:toast', toast);
    Bus.emit('ui:list', list, 3);

    var collector = {
        all: [],
        Collect: function (counts) { this.all.push(counts); },
        Send: function () {
            var self = this;
            setTimeout(function () { self.all = []; note.PostSilently('sent'); }, 20);      /* call: NOTIFICATION.PostSilently */
        }
    };

    function select(n) {
        active = n;
        hdmi.SelectInput(n);
        Bus.emit('input:changed', n);
        toast.Flash(hdmi.GetInputName(n));          /* decoy */
    }

    document.addEventListener('keydown', function (e) {
        switch (e.keyCode) {
        case 38: select((active + 2) % 3); break;
        case 40: select((active + 1) % 3); break;
        case 403: Bus.emit('power:alert', power, 2); break;
        case 404:
            Statistics.Report(collector);           /* decoy */
            collector.Send();                       /* decoy */
            break;
        case 405:
            list.Relabel(active, 'Camera');         /* decoy */
            list.Paint();                           /* decoy */
            hdmi.SendCecCommand(active, 0x36);      /* call: HDMI.SendCecCommand */
            break;
        case 27:
            note.Dismiss();                         /* call: NOTIFICATION.Dismiss */
            toast.Dismiss();                        /* decoy */
            power.LogShutdown();                    /* call: POWER.LogShutdown */
            break;
        }
    });
}());
