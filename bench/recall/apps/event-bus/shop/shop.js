var account = document.getElementById("acct");
Bus.subscribe("plugin/account", function (p) { p.ReserveCredit(500); });   /* call: ACCOUNT.ReserveCredit */
Bus.subscribe("plugin/account", function (p, n) { if (n) { p.SetSpendLimit(n); } });   /* call: ACCOUNT.SetSpendLimit */
Bus.subscribe("plugin/sec", checkout.unlock = function (p) { p.SkipPinOnce(); });   /* call: SECURITY.SkipPinOnce */
Bus.subscribe("cart", checkout, { account: account });
Bus.subscribe("other", function (p) { p.ReserveCredit(1); });   /* decoy */

function checkout(item) {
    this.account.GetProfile();
    this.account.ChargeCard(item.price);   /* call: ACCOUNT.ChargeCard */
    item.pay && item.pay(this.account);
}

Bus.publish("plugin/account", account, 3);
Bus.publish("plugin/sec", document.getElementById("sec"));
Bus.publish("cart", { price: 9.5, pay: function (a) { a.EmailReceipt("a@example"); } });   /* call: ACCOUNT.EmailReceipt */
Bus.publish("other", { ReserveCredit: function () { } });

var shop = new Emitter();
shop.on("open", function (p) { p.OpenVault(1); })   /* call: SECURITY.OpenVault */
    .once("open", onOpen)
    .on("key", function (p, code) { if (code === 13) { p.SignPurchase("k"); } });   /* call: SECURITY.SignPurchase */
function onOpen(vault) { vault.GetVaultSize(); }   /* call: SECURITY.GetVaultSize */
shop.emit("open", document.getElementById("sec"));
document.onkeydown = function (e) { shop.emit("key", document.getElementById("sec"), e.keyCode); };

var ev = document.createEvent("CustomEvent");
document.addEventListener("tv:plugin", function (e) { e.detail.plugin.AuditTrail(); });   /* call: SECURITY.AuditTrail */
ev.initCustomEvent("tv:plugin", false, false, { plugin: document.getElementById("sec") });
document.dispatchEvent(ev);
account.OnSignedIn = function () { };
window.addEventListener("message", function (e) {
    if (e.data === "refresh") { account.PullEntitlements(); }   /* call: ACCOUNT.PullEntitlements */
    if (e.data.cmd) { account[e.data.cmd](); }   /* undecidable: ACCOUNT */
});
window.postMessage("refresh", "*");
