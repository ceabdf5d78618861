var größe = "ä";
cam.SetGain2(größe);   /* call: CAMERA.SetGain2 */
