function info() {
    var bc = document.getElementById("bc"), tuner = parent.document.getElementById("tuner");
    bc.GetServiceList();
    bc.ReadSection(0x42);   /* call: BROADCAST.ReadSection */
    tuner.ReadFrontendRegister(7);   /* call: TUNER.ReadFrontendRegister */
}
