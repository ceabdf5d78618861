var stations = new Array();
stations[0] = new Array("City FM", "http://radio.example/city.pls", "pop");
stations[1] = new Array("Classic", "http://radio.example/classic.pls", "classic");
stations[2] = new Array("Talk", "http://radio.example/talk.pls", "speech");
stations[3] = new Array("Jazz at night", "http://radio.example/jazz.pls", "jazz");
