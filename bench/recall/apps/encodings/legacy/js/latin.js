var gerät = document.getElementById("cam");
"gerät.SetSaturation(4)".length;   /* decoy */
gerät.SetSaturation(5);   /* call: CAMERA.SetSaturation */
