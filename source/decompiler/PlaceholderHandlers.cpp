// Records that pop a fixed number of operands (when the stack holds that
// many) and push a fixed placeholder, or nothing. Operands are never folded
// into the placeholder: only their count matters to the replay.
#include "decompiler/DeCompiler.h"

#define FIXED_HANDLER(name, pops, placeholder) \
  unsigned DeCompiler::handleAction##name(std::vector<std::string>) { return replaceOperands(pops, placeholder); }

// Binary operations.
FIXED_HANDLER(Add, 2, "addResult#@x441#+")
FIXED_HANDLER(Subtract, 2, "subResult#@x441#-")
FIXED_HANDLER(Multiply, 2, "multyResult#@x441#*")
FIXED_HANDLER(Divide, 2, "divideResult#@x441#/")
FIXED_HANDLER(Add2, 2, "addResult2#@x441#+")
FIXED_HANDLER(StringAdd, 2, "concatStr#@x441#")
FIXED_HANDLER(Modulo, 2, "modulo#@x441#0")
FIXED_HANDLER(BitAnd, 2, "BitAnd#@x441#0")
FIXED_HANDLER(BitOr, 2, "BitOr#@x441#0")
FIXED_HANDLER(BitXor, 2, "BitXor#@x441#0")
FIXED_HANDLER(BitLShift, 2, "BitLShift#@x441#0")
FIXED_HANDLER(BitRShift, 2, "BitRShift#@x441#0")
FIXED_HANDLER(BitURShift, 2, "BitURShift#@x441#0")
FIXED_HANDLER(Equals, 2, "bool#@x441#true")
FIXED_HANDLER(Equals2, 2, "bool#@x441#true")
FIXED_HANDLER(StrictEquals, 2, "bool#@x441#true")
FIXED_HANDLER(Less, 2, "bool#@x441#true")
FIXED_HANDLER(Less2, 2, "bool#@x441#true")
FIXED_HANDLER(Greater, 2, "bool#@x441#true")
FIXED_HANDLER(And, 2, "bool#@x441#true")
FIXED_HANDLER(Or, 2, "bool#@x441#true")
FIXED_HANDLER(StringEquals, 2, "bool#@x441#true")
FIXED_HANDLER(StringGreater, 2, "bool#@x441#true")
FIXED_HANDLER(InstanceOf, 2, "bool#@x441#true")
FIXED_HANDLER(StringLess, 2, "strLess#@x441#true")
FIXED_HANDLER(GetProperty, 2, "PropertyValue#@x441#0")

// Unary operations.
FIXED_HANDLER(Not, 1, "bool#@x441#true")
FIXED_HANDLER(Increment, 1, "Increment#@x441#0")
FIXED_HANDLER(Decrement, 1, "Decrement#@x441#0")
FIXED_HANDLER(ToString, 1, "ToString#@x441#NULL")
FIXED_HANDLER(ToNumber, 1, "ToNumber#@x441#0")
FIXED_HANDLER(ToInteger, 1, "ToInt#@x441#0")
FIXED_HANDLER(TypeOf, 1, "StrType#@x441#undefined")
FIXED_HANDLER(StringLength, 1, "strLen#@x441#0")
FIXED_HANDLER(MBStringLength, 1, "MBStrLength#@x441#0")
FIXED_HANDLER(CharToAscii, 1, "ToAscii#@x441#0")
FIXED_HANDLER(MBCharToAscii, 1, "ToAscii#@x441#0")
FIXED_HANDLER(AsciiToChar, 1, "ToChar#@x441#NULL")
FIXED_HANDLER(MBAsciiToChar, 1, "ToChar#@x441#NULL")
FIXED_HANDLER(RandomNumber, 1, "randomNumber#@x441#0")
FIXED_HANDLER(Enumerate, 1, "enumerator#@x441#0")
FIXED_HANDLER(Enumerate2, 1, "enumerator#@x441#0")
FIXED_HANDLER(TargetPath, 1, "targetPath#@x441#")

// Ternary operations.
FIXED_HANDLER(StringExtract, 3, "extractedStr#@x441#NULL")
FIXED_HANDLER(MBStringExtract, 3, "MBExtractedStr#@x441#NULL")

// Operand-free results.
FIXED_HANDLER(GetTime, 0, "msTime#@x441#0")

// Records that only consume operands. Stores go nowhere: the variable table
// stays untouched.
FIXED_HANDLER(Pop, 1, nullptr)
FIXED_HANDLER(SetMember, 3, nullptr)
FIXED_HANDLER(SetProperty, 3, nullptr)
FIXED_HANDLER(CloneSprite, 3, nullptr)
FIXED_HANDLER(DefineLocal, 2, nullptr)
FIXED_HANDLER(SetVariable, 2, nullptr)
FIXED_HANDLER(GetURL2, 2, nullptr)
FIXED_HANDLER(Delete, 2, nullptr)
FIXED_HANDLER(Extends, 2, nullptr)
FIXED_HANDLER(DefineLocal2, 1, nullptr)
FIXED_HANDLER(Call, 1, nullptr)
FIXED_HANDLER(GotoFrame2, 1, nullptr)
FIXED_HANDLER(SetTarget2, 1, nullptr)
FIXED_HANDLER(RemoveSprite, 1, nullptr)
FIXED_HANDLER(WaitForFrame2, 1, nullptr)
FIXED_HANDLER(Trace, 1, nullptr)
FIXED_HANDLER(Delete2, 1, nullptr)
FIXED_HANDLER(With, 1, nullptr)
FIXED_HANDLER(Return, 1, nullptr)
FIXED_HANDLER(Throw, 1, nullptr)
// A branch only consumes its condition: both paths are replayed in listing
// order.
FIXED_HANDLER(If, 1, nullptr)

#undef FIXED_HANDLER
