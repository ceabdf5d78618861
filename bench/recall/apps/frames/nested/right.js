var acct = document.getElementById("acct");
acct.SetSeedRatio(2);   /* call: DOWNLOADER.SetSeedRatio */
window.onload = function () {
    parent.left.helper(acct, 3);
    parent.left.postMessage({ kind: "profile", n: 1 }, "*");
    var f = document.createElement("iframe");
    f.srcdoc = "<object id='deep' classid='clsid:MORVANE-NAVERTIX-CLOCK'></object><script>parent.onDeep(deep)<\/script>";
    document.body.appendChild(f);
};
function onDeep(p) { p.SetDeepSleepAlarm(6); }   /* call: CLOCK.SetDeepSleepAlarm */
