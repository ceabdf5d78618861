// Evenings: a calendar of the house. It is read from a table, not from the set.
var Evenings = (function () {
    var list = [{ day: 5, title: 'Jazz' }, { day: 6, title: 'Quiz' }];

    function Evening(entry) { this.entry = entry; this.guests = 0; }
    Evening.prototype.Reserve = function (n) { this.guests += n; return this; };
    Evening.prototype.Announce = function () { return this.entry.title + ' (' + this.guests + ')'; };

    return {
        Find: function (day) {
            for (var i = 0; i < list.length; i++) {
                if (list[i].day === day) { return new Evening(list[i]); }
            }
            return new Evening({ title: 'none' });
        },
        Reserve: function (day, n) { return this.Find(day).Reserve(n).Announce(); }     /* decoy */
    };
}());

document.title = Evenings.Reserve(5, 2);                            /* decoy */
window.audio_ = { LimitPeaks: function () { return Evenings.Find(6).Announce(); } };    /* decoy */
audio_.LimitPeaks();                                                /* decoy */
document.forms.order.what.onfocus = function () {
    document.getElementById('audio').LimitPeaks(-3);                /* call: AUDIO.LimitPeaks */
};
