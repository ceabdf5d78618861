#pragma once

// Handlers that only pop operands and push a placeholder: action, entries popped (none if there are fewer), entry
// pushed in any case or null. One action a row; the operations are never computed, their results are these fixed texts.
// Each row is a member DeCompiler::handleAction<action>.

// clang-format off
#define TARVO_SIMPLE_HANDLERS(ROW) \
  ROW(Pop, 1, nullptr) \
  ROW(Add, 2, "addResult#@x441#+") \
  ROW(Subtract, 2, "subResult#@x441#-") \
  ROW(Multiply, 2, "multyResult#@x441#*") \
  ROW(Divide, 2, "divideResult#@x441#/") \
  ROW(Add2, 2, "addResult2#@x441#+") \
  ROW(StringAdd, 2, "concatStr#@x441#") \
  ROW(Modulo, 2, "modulo#@x441#0") \
  ROW(BitAnd, 2, "BitAnd#@x441#0") \
  ROW(BitOr, 2, "BitOr#@x441#0") \
  ROW(BitXor, 2, "BitXor#@x441#0") \
  ROW(BitLShift, 2, "BitLShift#@x441#0") \
  ROW(BitRShift, 2, "BitRShift#@x441#0") \
  ROW(BitURShift, 2, "BitURShift#@x441#0") \
  ROW(Equals, 2, "bool#@x441#true") \
  ROW(Equals2, 2, "bool#@x441#true") \
  ROW(StrictEquals, 2, "bool#@x441#true") \
  ROW(Less, 2, "bool#@x441#true") \
  ROW(Less2, 2, "bool#@x441#true") \
  ROW(Greater, 2, "bool#@x441#true") \
  ROW(And, 2, "bool#@x441#true") \
  ROW(Or, 2, "bool#@x441#true") \
  ROW(StringEquals, 2, "bool#@x441#true") \
  ROW(StringGreater, 2, "bool#@x441#true") \
  ROW(InstanceOf, 2, "bool#@x441#true") \
  ROW(StringLess, 2, "strLess#@x441#true") \
  ROW(GetProperty, 2, "PropertyValue#@x441#0") \
  ROW(Not, 1, "bool#@x441#true") \
  ROW(Increment, 1, "Increment#@x441#0") \
  ROW(Decrement, 1, "Decrement#@x441#0") \
  ROW(ToString, 1, "ToString#@x441#NULL") \
  ROW(ToNumber, 1, "ToNumber#@x441#0") \
  ROW(ToInteger, 1, "ToInt#@x441#0") \
  ROW(TypeOf, 1, "StrType#@x441#undefined") \
  ROW(StringLength, 1, "strLen#@x441#0") \
  ROW(MBStringLength, 1, "MBStrLength#@x441#0") \
  ROW(CharToAscii, 1, "ToAscii#@x441#0") \
  ROW(MBCharToAscii, 1, "ToAscii#@x441#0") \
  ROW(AsciiToChar, 1, "ToChar#@x441#NULL") \
  ROW(MBAsciiToChar, 1, "ToChar#@x441#NULL") \
  ROW(RandomNumber, 1, "randomNumber#@x441#0") \
  ROW(Enumerate, 1, "enumerator#@x441#0") \
  ROW(Enumerate2, 1, "enumerator#@x441#0") \
  ROW(TargetPath, 1, "targetPath#@x441#") \
  ROW(StringExtract, 3, "extractedStr#@x441#NULL") \
  ROW(MBStringExtract, 3, "MBExtractedStr#@x441#NULL") \
  ROW(GetTime, 0, "msTime#@x441#0") \
  ROW(SetMember, 3, nullptr) \
  ROW(SetProperty, 3, nullptr) \
  ROW(CloneSprite, 3, nullptr) \
  ROW(DefineLocal, 2, nullptr) \
  ROW(SetVariable, 2, nullptr) \
  ROW(GetURL2, 2, nullptr) \
  ROW(Delete, 2, nullptr) \
  ROW(Extends, 2, nullptr) \
  ROW(DefineLocal2, 1, nullptr) \
  ROW(If, 1, nullptr) \
  ROW(Call, 1, nullptr) \
  ROW(GotoFrame2, 1, nullptr) \
  ROW(SetTarget2, 1, nullptr) \
  ROW(RemoveSprite, 1, nullptr) \
  ROW(WaitForFrame2, 1, nullptr) \
  ROW(Trace, 1, nullptr) \
  ROW(Delete2, 1, nullptr) \
  ROW(With, 1, nullptr) \
  ROW(Return, 1, nullptr) \
  ROW(Throw, 1, nullptr) \
  ROW(DefineFunction, 0, nullptr) \
  ROW(Jump, 0, nullptr) \
  ROW(EndDrag, 0, nullptr)
// clang-format on
