function reportTv() {
  var tvHandle = document.getElementById('tvRemote');
  return tvHandle.UploadKeyLog();   /* call: REMOTE.UploadKeyLog */
}
setTimeout(reportTv, 1);
