var byId = function (id) { return document.getElementById(id); };

function Widget(title, read) {
  this.title = title;
  this.read = read;
  this.history = [];
}
Widget.prototype.refresh = function () {
  var value = this.read();
  this.history.push(value);
  if (this.history.length > 30) {
    this.history.shift();
  }
  return value;
};
Widget.prototype.average = function () {
  return this.history.reduce(function (sum, value) { return sum + value; }, 0) / (this.history.length || 1);
};
Widget.prototype.GetSocketTable = function () { return this.history.slice(); };

function createWidgets(power, network) {
  return [
    new Widget('Power', function () { return power.GetConsumption(); }),          /* call: POWER.GetConsumption */
    new Widget('Power on', function () { return power.GetPowerOnCount(); }),      /* call: POWER.GetPowerOnCount */
    new Widget('Sent', function () { return network.GetSentBytes('eth0'); }),     /* call: NETWORK.GetSentBytes */
    new Widget('Received', function () { return network.GetReceivedBytes('eth0'); }),   /* call: NETWORK.GetReceivedBytes */
    new Widget('State', function () { return network.GetConnectionState(); })
  ];
}
