shot();
cam.StoreDng("x");   /* call: CAMERA.StoreDng */
