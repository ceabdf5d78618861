// Writes the Flash object, as the authoring tool made it.
var isIE = (navigator.appVersion.indexOf("MSIE") != -1) ? true : false;
var isWin = (navigator.appVersion.toLowerCase().indexOf("win") != -1) ? true : false;

function AC_AddExtension(src, ext) {
  if (src.indexOf('?') != -1)
    return src.replace(/\?/, ext + '?');
  else
    return src + ext;
}

function AC_Generateobj(objAttrs, params, embedAttrs) {
  var str = '';
  var i;
  if (isIE && isWin) {
    str += '<object ';
    for (i in objAttrs) { str += i + '="' + objAttrs[i] + '" '; }
    str += '>';
    for (i in params) { str += '<param name="' + i + '" value="' + params[i] + '" /> '; }
    str += '</object>';
  } else {
    str += '<embed ';
    for (i in embedAttrs) { str += i + '="' + embedAttrs[i] + '" '; }
    str += '> </embed>';
  }
  document.write(str);
}

function AC_FL_RunContent() {
  var ret = AC_GetArgs(arguments, ".swf", "movie", "application/x-none");
  AC_Generateobj(ret.objAttrs, ret.params, ret.embedAttrs);
}

function AC_GetArgs(args, ext, srcParamName, mimeType) {
  var ret = new Object();
  ret.embedAttrs = new Object();
  ret.params = new Object();
  ret.objAttrs = new Object();
  for (var i = 0; i < args.length; i = i + 2) {
    var currArg = args[i].toLowerCase();
    switch (currArg) {
      case "src":
      case "movie":
        args[i + 1] = AC_AddExtension(args[i + 1], ext);
        ret.embedAttrs["data-src"] = args[i + 1];
        ret.params[srcParamName] = args[i + 1];
        break;
      case "width":
      case "height":
        ret.embedAttrs[args[i]] = ret.objAttrs[args[i]] = args[i + 1];
        break;
      default:
        ret.embedAttrs[args[i]] = ret.params[args[i]] = args[i + 1];
    }
  }
  if (mimeType) ret.embedAttrs["type"] = mimeType;
  return ret;
}
