var dishes = [
  { name: "Soup of the day", price: 5.5 }, { name: "Trout", price: 17.9 }, { name: "Dumplings", price: 11.2 }, { name: "Plum cake", price: 4.8 }
];
var ordered = [];
var printer = document.getElementById("printer"), note = document.getElementById("note"), disp = document.getElementById("disp");

// {{name}} is put in; what is in braces twice more is code of the restaurant.
function fill(text, values) {
  return text.replace(/\{\{(\w+)\}\}/g, function (all, name) { return values[name]; });
}

function render() {
  document.getElementById("menu").innerHTML = tmpl("dish", { dishes: dishes, disp: disp });
  var total = ordered.reduce(function (sum, i) { return sum + dishes[i].price; }, 0);
  document.getElementById("order").innerHTML = fill(
    "<a href=\"javascript:pay({{total}})\">Pay {{total}}</a> <b onclick=\"printer.PrintBill({{table}})\">Bill</b>",   /* text: SERIALPORT.PrintBill */
    { total: total.toFixed(2), table: 4 });
}

function order(i) {
  ordered.push(i);
  printer.SendToKitchen(dishes[i].name);                       /* call: SERIALPORT.SendToKitchen */
  note.ShowMessage(dishes[i].name);
  till.PrintBill(ordered.length);                              /* decoy */
  render();
}

var till = { count: 0, PrintBill: function (n) { this.count += n; } };

function pay(total) {
  printer.OpenCashDrawer();                                    /* call: SERIALPORT.OpenCashDrawer */
  note.FlashBorder("green");                                   /* call: NOTIFICATION.FlashBorder */
  ordered = [];
  render();
}

function footer() {
  var copy = document.importNode(document.getElementById("foot").content, true);
  document.getElementById("footer").appendChild(copy);
  disp.SetMenuBrightness(80);                                  /* call: DISPLAY.SetMenuBrightness */
}

document.addEventListener("keydown", function (e) {
  if (e.keyCode >= 49 && e.keyCode < 49 + dishes.length) { order(e.keyCode - 49); }
  if (e.keyCode === 403) { pay(0); }
  if (e.keyCode === 404) {
    var row = `<i onclick="note.ShowAllergens('${dishes[0].name}')">?</i>`;   /* text: NOTIFICATION.ShowAllergens */
    document.getElementById("footer").insertAdjacentHTML("beforeend", row);   /* also: NOTIFICATION.ShowAllergens */
  }
});
render();
footer();
