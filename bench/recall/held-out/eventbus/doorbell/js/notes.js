(function () {
  function Notes() {
    this.plugin = document.getElementById("note");
    this.log = [];
    Bus.subscribe("note/*", this.handle.bind(this));
    Bus.subscribe("camera/on", this.picture, this);
  }
  Notes.prototype.handle = function (note, topic) {
    this.log.push(topic);
    if (note.method) {
      this.plugin[note.method](note.text);              /* also: NOTIFICATION.ShowToast */
    } else {
      this.plugin.ShowMessage(note.text);
    }
  };
  Notes.prototype.picture = function (event) {
    event.camera.EmbedInNotification(1);                /* call: CAMERA.EmbedInNotification */
    this.plugin.AttachThumbnail(event.time);            /* call: NOTIFICATION.AttachThumbnail */
  };
  Notes.prototype.PlayTone = function (n) { this.log.push("tone " + n); };
  window.notes = new Notes();
}());
