# Calls on look-ups of a plug-in, as script makes them: document.getElementById("tv").GetVersion(), $("tv").Open(1).
doaction {
  Push 0, "tv", 1, "document"
  GetVariable
  Push "getElementById"
  CallMethod
  Push "GetVersion"
  CallMethod
  Pop
  Push 1, 1, "tv", 1, "$"
  CallFunction
  Push "Open"
  CallMethod
  Push "Run", 1, "tv", 1, "$_"
  CallFunction
  Push "Execute"
  CallMethod
  Push 1, "trace"
  CallFunction
  Push 0, "tv", 1, "$"
  CallFunction
  Push "GetSerial"
  CallMethod
}
end
