define(function () {
    var radio = document.getElementById('bt');
    radio.Open();
    radio.EnableA2dpSource(true);                              /* call: BLUETOOTH.EnableA2dpSource */
    return radio;
});
