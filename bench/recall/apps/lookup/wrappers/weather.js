var city = "Lyon";

function onLine() {
    var n = $("net");
    if (n.GetConnectionState()) { n.ForceRenew(); }   /* call: NETWORK.ForceRenew */
    $("net").SetDscp(46);   /* call: NETWORK.SetDscp */
    return n.ProbeDns("example");   /* call: NETWORK.ProbeDns */
}

function load() {
    var s = plugin("store"), l = plugin("loc");
    city = s.GetItem("city") + s.ReadRaw(0, 16);   /* call: STORAGE.ReadRaw */
    l.GetCountry();
    l.GetPostcode();   /* call: LOCALE.GetPostcode */
    byId("store").Defragment();   /* call: STORAGE.Defragment */
    byId(l).SetRegionCode("FR-69");   /* call: LOCALE.SetRegionCode */
    Dom.text("out", city);
    $("out").Defragment = function () { };
    $("out").Defragment();   /* decoy */
}

function late() {
    Dom.get("net").GetRouteTable();   /* call: NETWORK.GetRouteTable */
    Dom.get("store").GetWearLevel();   /* call: STORAGE.GetWearLevel */
    $q("#loc").GetRoomNumber();   /* call: LOCALE.GetRoomNumber */
    var again = Dom.get("loc");
    again.PinLanguage("fr");   /* call: LOCALE.PinLanguage */
    document.getElementsByTagName("object")[0].FlushArp();   /* call: NETWORK.FlushArp */
}

window.onload = function () { onLine(); load(); setTimeout("late()", 10); };
