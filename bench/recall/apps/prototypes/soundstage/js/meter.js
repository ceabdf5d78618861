/** Shows a level as a bar. It is told of changes by the equalizer. */
function Meter(parent, name) {
    this.name = name;
    this.element = document.createElement("li");
    this.element.innerHTML = name + ": 0";
    parent.appendChild(this.element);
}
Meter.prototype.OnSound = function (what, value) {
    if (what === this.name) {
        this.Draw(value);                               /* decoy */
    }
};
Meter.prototype.Draw = function (value) {
    this.element.innerHTML = this.name + ": " + value;
    this.element.className = value ? "on" : "";
};

/** Reads what comes out of the speakers, as long as the page is shown. */
function LevelReader(device, meter) {
    this.device = device;
    this.meter = meter;
    this.timer = 0;
}
LevelReader.prototype.Run = function () {
    var self = this;
    this.timer = setInterval(function () { self.Sample(); }, 40);   /* decoy */
};
LevelReader.prototype.Sample = function () {
    var peak = this.device.GetPeakLevel(0);             /* call: AUDIO.GetPeakLevel */
    this.meter.Draw(peak);                              /* decoy */
};
LevelReader.prototype.End = function () {
    clearInterval(this.timer);
    this.device.HoldPeak(false);                        /* call: AUDIO.HoldPeak */
};
