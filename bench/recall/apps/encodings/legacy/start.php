<!DOCTYPE html>
<html><head><meta http-equiv="Content-Type" content="text/html; charset=iso-8859-1"><title>Start</title></head><body>
<object id="cam" classid="clsid:MORVANE-NAVERTIX-CAMERA"></object>
<script>document.getElementById("cam").SetMirror(1);</script> <!-- call: CAMERA.SetMirror -->
<script src="js/utf16.js"></script>
<script src="js/latin.js" charset="iso-8859-1"></script>
<script src="js/bom.js"></script>
<script src="js/code.txt"></script>
<script src="js/plain"></script>
<script src="js/lib.inc?v=3"></script>
<script src="js/m%61in.js"></script>
<script src="data:text/javascript,cam.SetIso(800)"></script> <!-- call: CAMERA.SetIso -->
<script src="data:text/javascript;base64,Y2FtLlNldFNodXR0ZXIoMSk="></script> <!-- call: CAMERA.SetShutter -->
<iframe src="page.xhtml"></iframe>
</body></html>
