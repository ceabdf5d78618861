function first(p) { p.SetSampleRate(48000); p.Gr\u0061bMic(); }   /* call: MICROPHONE.SetSampleRate, MICROPHONE.GrabMic */
