function ask() {
  return document.getElementById("tv").GetSource();
}
