var osd = document.getElementById('osd');

function show(text) {
    osd.innerHTML = text;
    clearTimeout(show.timer);
    show.timer = setTimeout(function () { osd.innerHTML = ''; }, 3000);
}

function Cable(tuner) {
    this.tuner = tuner;
}
Cable.prototype.tune = function (mhz) {
    this.tuner.SetFrequency(mhz * 1000);
    this.tuner.SetSymbolRate(6900);                     /* call: TUNER.SetSymbolRate */
    this.tuner.SetModulation('QAM256');                 /* call: TUNER.SetModulation */
    return this.tuner.GetSignalQuality();
};
Cable.prototype.describe = function () {
    return 'error rate ' + this.tuner.GetBitErrorRate();    /* call: TUNER.GetBitErrorRate */
};

function Dish(device) {
    this.tuner = device;
}
Dish.prototype.tune = function (degrees) {
    this.tuner.SetLnbVoltage(degrees > 20 ? 18 : 13);   /* decoy */
    this.tuner.SendDiseqc([0xe0, 0x10, 0x38]);          /* decoy */
    this.tuner.MoveDish(degrees);                       /* decoy */
    return 80;
};
Dish.prototype.describe = function () {
    return 'dish at ' + this.tuner.GetDishPosition();   /* decoy */
};

var inputs = [new Cable(Device.tuner()), new Dish(Device.satellite())];
var active = 0;

function retune(value) {
    var input = inputs[active];
    show(input.tune(value) + '% ' + input.describe());
}

function zap(step) {
    var channels = Device.channels();
    if (step > 0) {
        channels.ChannelUp();
    } else {
        channels.ChannelDown();
    }
    channels.FlushZapBuffer();                          /* call: CHANNEL.FlushZapBuffer */
    var now = Device.guide().GetPresentEvent();
    show(now.title);
}

function listing() {
    var guide = Device.guide(), text = [];
    guide.Rebuild();                                    /* decoy */
    var events = guide.ListAll();                       /* decoy */
    for (var i = 0; i < events.length; i++) {
        text.push(events[i].title);
    }
    show(text.join(', '));
}

document.addEventListener('keydown', function (e) {
    if (e.keyCode === 33) { zap(1); }
    if (e.keyCode === 34) { zap(-1); }
    if (e.keyCode === 403) { active = 0; retune(346); }
    if (e.keyCode === 404) { active = 1; retune(13); }
    if (e.keyCode === 405) { listing(); }
    if (e.keyCode === 406) {
        Device.channels().SwapChannels(1, 2);           /* call: CHANNEL.SwapChannels */
        Device.channels().RenameChannel(1, 'One');      /* call: CHANNEL.RenameChannel */
        Device.satellite().SetLnbVoltage(0);            /* decoy */
    }
    if (e.keyCode === 27) {
        Device.tuner().SetLnbVoltage(0);                /* call: TUNER.SetLnbVoltage */
        Device.satellite().MoveDish(19.2);              /* decoy */
        Device.tuner().EnterLowPower();                 /* call: TUNER.EnterLowPower */
    }
}, false);

Device.channels().SortByName();                         /* call: CHANNEL.SortByName */
Device.guide().Rebuild();                               /* decoy */
