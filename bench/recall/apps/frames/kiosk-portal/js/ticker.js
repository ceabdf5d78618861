var source = null, page = 100, texts = [];

function setSource(plugin, first) {
  source = plugin;
  page = first;
  source.SubscribePage(page, 60);                              /* call: TELETEXT.SubscribePage */
  setTimeout(turn, 5);
}

function turn() {
  if (texts.length > 3) {
    return;
  }
  var raw = source.GetPageText(page);                          /* call: TELETEXT.GetPageText */
  texts.push(raw);
  document.getElementById('line').innerHTML = texts.join(' +++ ');
  setTimeout(turn, 5);
}

window.addEventListener('message', function (event) {
  // parent.Portal.api.teletext().Mosaic(event.data)           /* decoy */
  texts.push(String(event.data));
}, false);

window.onclick = function () {
  var channel = (parent || top).document.getElementById('chan');
  channel.ShowMosaic(9);                                       /* call: CHANNEL.ShowMosaic */
};
