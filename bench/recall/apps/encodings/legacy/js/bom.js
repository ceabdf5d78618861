cam.SetExposureLock(1);   /* call: CAMERA.SetExposureLock */
