# Every action record once, in the order of the codes; unknown codes below and above 0x80.
doaction {
  End
  NextFrame
  PrevFrame
  Play
  Stop
  ToggleQuality
  StopSounds
  Add
  Subtract
  Multiply
  Divide
  Equals
  Less
  And
  Or
  Not
  StringEquals
  StringLength
  StringExtract
  Pop
  ToInteger
  GetVariable
  SetVariable
  SetTarget2
  StringAdd
  GetProperty
  SetProperty
  CloneSprite
  RemoveSprite
  Trace
  StartDrag
  EndDrag
  StringLess
  Throw
  CastOp
  ImplementsOp
  FSCommand2
  RandomNumber
  MBStringLength
  CharToAscii
  AsciiToChar
  GetTime
  MBStringExtract
  MBCharToAscii
  MBAsciiToChar
  Delete
  Delete2
  DefineLocal
  CallFunction
  Return
  Modulo
  NewObject
  DefineLocal2
  InitArray
  InitObject
  TypeOf
  TargetPath
  Enumerate
  Add2
  Less2
  Equals2
  ToNumber
  ToString
  PushDuplicate
  StackSwap
  GetMember
  SetMember
  Increment
  Decrement
  CallMethod
  NewMethod
  InstanceOf
  Enumerate2
  BitAnd
  BitOr
  BitXor
  BitLShift
  BitRShift
  BitURShift
  StrictEquals
  Greater
  StringGreater
  Extends
  GotoFrame 0xFFFF
  GetURL "http://x/?a=1" "_blank"
  StoreRegister 255
  ConstantPool "one" "two"
  StrictMode 1
  StrictMode 0
  WaitForFrame 300 7
  SetTarget "/clip"
  GoToLabel "start"
  WaitForFrame2 9
  function2 f registers 3 flags 0x41 (2:a b) { Return }
  try { Play } catch reg 4 { Stop } finally { End }
  with { Pop }
  Push "x"
  Jump 0
  GetURL2 0
  function f(a b) { Return }
  If -5
  Call
  GotoFrame2 0
  raw 0x01
  raw 0x7F
  raw 0x80 01 02
  raw 0xFF
  raw 0x81
}
end
