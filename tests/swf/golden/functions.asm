# Functions with every register flag, cut parameter lists, and calls that become statements.
doaction {
  function2 all registers 9 flags 0x01FF (7:a 7:b 1:c d 0:e) {
    Push reg 1, reg 6, reg 7, 3, "f"
    CallFunction
  }
  Stop
  function2 preloads registers 255 flags 0x0155 () { Return }
  Stop
  function2 suppresses flags 0x002A () { Return }
  Stop
  function2 unknown flags 0xFE00 () { Return }
  Stop
  function2 nobody count 3 (4:only) { Return }
  Stop
  function2 length 14 cut flags 1 (5:a 6:bcdef) { Return }
  Stop
  function empty() { }
  function named(first second third) {
    Push "arg", 1, "tuner"
    GetVariable
    Push "Tune"
    CallMethod
    Return
  }
  function cut count 9 (a) { Return }
  Push "b", "a", 2, "C"
  NewObject
  Push "m"
  GetMember
  Push 1, "outer"
  CallFunction
}
end
