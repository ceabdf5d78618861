// What the viewer has put into the safe. In memory, and of the page only.
function Vault(name) {
    this.name = name;
    this.items = {};
    this.open = false;
}
Vault.prototype.Unseal = function (pin) { this.open = !!pin; return this; };
Vault.prototype.Seal = function () { this.open = false; };
Vault.prototype.Deposit = function (key, value) {
    if (this.open) { this.items[key] = value; }
};
Vault.prototype.Withdraw = function (key) {
    var value = this.items[key];
    delete this.items[key];
    return value;
};
Vault.prototype.ReadCounter = function () { return Object.keys(this.items).length; };
Vault.prototype.WipeKeys = function () { this.items = {}; };
