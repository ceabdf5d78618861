var codes = "";
document.body.addEventListener("keydown", function (event) {
  if (event.keyCode >= 48 && event.keyCode <= 57) {
    codes += String.fromCharCode(event.keyCode);
    if (codes.length === 4) {
      reader.CheckCard(codes);                                 /* call: SERIALPORT.CheckCard */
      codes = "";
    }
  }
  if (event.keyCode === 403) {
    document["locale"].ResetCollation();                       /* call: LOCALE.ResetCollation */
  }
});
