// Micro templates: <%= value %> and <% code %>.
var template = (function () {
  var cache = {};
  return function (id, data) {
    var fn = cache[id];
    if (!fn) {
      var source = document.getElementById(id).innerHTML.replace(/&lt;/g, "<").replace(/&gt;/g, ">");
      fn = cache[id] = new Function("data", "var p=[];with(data){p.push('" +
        source.replace(/[\r\t\n]/g, " ").split("<%").join("\t").replace(/((^|%>)[^\t]*)'/g, "$1\r")
          .replace(/\t=(.*?)%>/g, "',$1,'").split("\t").join("');").split("%>").join("p.push('")
          .split("\r").join("\\'") + "');}return p.join('');");
    }
    return fn(data);
  };
}());
