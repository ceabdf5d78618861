#include "decompiler/DeCompiler.h"

#include <gtest/gtest.h>

#include <sstream>

#include "platform/TimeBudget.h"
#include "tarvo/RunResult.h"

using FlashEngine_1_00::DeCompiler;
using Texts = std::vector<std::string>;

namespace {

// One field line of a push, "string x", "int 3" or "reg 2".
std::string pushed(const std::string& type, const std::string& value) {
  const std::string key = type == "4" ? "reg$" : "value";
  return "ActionPush#@x441#type#@x442#" + type + "#@x441#" + key + "#@x442#" + value;
}

class Replay : public ::testing::Test {
 protected:
  Texts statements(Texts listing) {
    FlashEngine_1_00::startTimeBudget();
    Texts found{"old"};
    EXPECT_EQ(decompiler_.SWFDeCompilerMain(listing, found), RUN_SUCCESS);
    return found;
  }

  // A listing that pushes these entries, the last one on top: "#3" an integer, "$2" a register, else a string.
  static Texts push(const Texts& entries) {
    Texts listing{"[ActionPush]"};
    for (const std::string& entry : entries) {
      const std::string type = entry[0] == '#' ? "7" : entry[0] == '$' ? "4" : "0";
      listing.push_back(pushed(type, type == "0" ? entry : entry.substr(1)));
    }
    return listing;
  }

  // What stands on the stack after `listing`, as the arguments of a call.
  Texts argumentsAfter(Texts listing, int count) {
    for (const std::string& line : push({"#" + std::to_string(count), "f"}))
      listing.push_back(line);
    listing.push_back("[ActionCallFunction]");
    return statements(listing);
  }

  DeCompiler decompiler_;
};

Texts operator+(Texts a, const Texts& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

TEST_F(Replay, MakesStatementsOfCalls) {
  struct Row {
    Texts listing, statements;
  };
  for (const Row& row : std::vector<Row>{
           {{}, {}},
           {{"[ActionPlay]", "garbage", ""}, {}},
           {push({"x", "#1", "f"}) + Texts{"[ActionCallFunction]"}, {"f(x)"}},
           {push({"b", "a", "#2", "o", "m"}) + Texts{"[ActionCallMethod]"}, {"o.m(a,b)"}},
           {push({"#0", "o", "m"}) + Texts{"[ActionCallMethod]", "[ActionStop]", "[ActionCallMethod]"},
            {"o.m()", ".()"}},
           {push({"a", "#2", "f"}) + Texts{"[ActionCallFunction]"}, {"f(a,)"}},
           {push({"a", "#-1", "f"}) + Texts{"[ActionCallFunction]"}, {"f()"}},
           {push({"a", "#4294967297", "f"}) + Texts{"[ActionCallFunction]"}, {"f(a,)"}},
           {push({"a", "many", "f"}) + Texts{"[ActionCallFunction]"}, {"f()"}},
           {push({"f"}) + Texts{"[ActionCallFunction]"}, {"()"}},
           // A call's result is an argument of the next one.
           {push({"#0", "a", "b"}) + Texts{"[ActionCallMethod]"} + push({"#1", "f"}) + Texts{"[ActionCallFunction]"},
            {"a.b()", "f(a.b())"}},
           // An entry of three pieces has no value part.
           {push({"x"}) + Texts{"ActionPush#@x441#a#@x442#1#@x441#b#@x442#2#@x441#c#@x442#3", pushed("7", "2"),
                                pushed("0", "f"), "[ActionCallFunction]"},
            {"f(,x)"}},
       }) {
    EXPECT_EQ(statements(row.listing), row.statements) << testing::PrintToString(row.listing);
  }
}

TEST_F(Replay, HeadersThatBeginAlikeAreSwallowed) {
  // The second header is one more argument line of the first record, and pushes an empty entry.
  EXPECT_EQ(argumentsAfter(push({"a"}) + Texts{"[ActionPushDuplicate]", "[ActionStop]"}, 2), (Texts{"f(,a)"}));
  EXPECT_EQ(statements(push({"a"}) + push({"#2", "f"}) + Texts{"[ActionCallFunction]"}), (Texts{"f(,a)"}));
  EXPECT_EQ(argumentsAfter(push({"a", "b", "c"}) + Texts{"[ActionPop]", "[ActionPop]", "[ActionStop]"}, 2),
            (Texts{"f(b,a)"}));
  EXPECT_EQ(argumentsAfter({"[ActionAdd]", "[ActionAdd2]", "[ActionStop]"}, 2), (Texts{"f(+,)"}));
  EXPECT_EQ(statements({"[ActionCall]", "[ActionCallMethod]"}), Texts{});
}

TEST_F(Replay, TheFirstHeaderOfTheTableDecides) {
  // Any header in a line counts, also inside a text; an earlier row wins over an earlier place.
  EXPECT_EQ(argumentsAfter(push({"a", "b"}) + Texts{"x[ActionNot][[ActionPop]", "[ActionStop]"}, 2), (Texts{"f(a,)"}));
  EXPECT_EQ(argumentsAfter(push({"a", "b"}) + Texts{"[ActionPop][ActionPlay]", "[ActionStop]"}, 2), (Texts{"f(b,a)"}));
}

TEST_F(Replay, LessThanChangesNothing) {
  EXPECT_EQ(argumentsAfter(push({"a", "b"}) + Texts{"[ActionLessThan]"}, 2), (Texts{"f(b,a)"}));
  EXPECT_EQ(argumentsAfter(push({"a", "b"}) + Texts{"[ActionLess2]"}, 2), (Texts{"f(true,)"}));
}

TEST_F(Replay, RegistersHoldWhatFunctionsPreload) {
  const Texts function = {"[ActionDefineFunction2]",
                          "ActionDefineFunction2#@x441#oper#@x442#start",
                          "ActionDefineFunction2#@x441#nregisters#@x442#5#@x441#numParams#@x442#2",
                          "ActionDefineFunction2#@x441#fName#@x442#g",
                          "ActionDefineFunction2#@x441#Preloaded#@x442#this",
                          "ActionDefineFunction2#@x441#Suppressed#@x442#arguments",
                          "ActionDefineFunction2#@x441#Preloaded#@x442#_root",
                          "ActionDefineFunction2#@x441#reg$#@x442#4#@x441#param#@x442#tuner",
                          "ActionDefineFunction2#@x441#reg$#@x442#4294967301#@x441#param#@x442#far",
                          "ActionDefineFunction2#@x441#reg$#@x442#5",
                          "ActionDefineFunction2#@x441#oper#@x442#end"};
  EXPECT_EQ(statements(push({"lost"}) + function + push({"$300", "$5", "$4", "$2", "$1", "#6", "f"}) +
                       Texts{"[ActionCallFunction]"}),
            (Texts{"f(this,_root,tuner,NullValue,,"
                   ")"}));
  EXPECT_EQ(argumentsAfter(push({"lost"}) + Texts{"[ActionDefineFunction2]", "[ActionStop]"}, 1), (Texts{"f()"}));
  EXPECT_EQ(statements(push({"$1", "#1", "f"}) + Texts{"[ActionCallFunction]"}), (Texts{"f(NullValue)"}));  // a new run
}

TEST_F(Replay, StoreRegisterStoresNothing) {
  EXPECT_EQ(statements(push({"a"}) + Texts{"[ActionStoreRegister]", "ActionStoreRegister#@x441#reg#@x442#1"} +
                       push({"$1", "#2", "f"}) + Texts{"[ActionCallFunction]"}),
            (Texts{"f(NullValue,a)"}));
}

TEST_F(Replay, StackSwapSwapsNothing) {
  EXPECT_EQ(argumentsAfter(push({"a", "b"}) + Texts{"[ActionStackSwap]"}, 2), (Texts{"f(b,a)"}));
}

TEST_F(Replay, BuildsTextsOfConstructionsAndMembers) {
  struct Row {
    Texts listing;
    int count;
    const char* statement;
  };
  for (const Row& row : std::vector<Row>{
           {push({"o", "m"}) + Texts{"[ActionGetMember]"}, 1, "f(o.m)"},
           {push({"m"}) + Texts{"[ActionGetMember]"}, 2, "f(.,m)"},
           {push({"v"}) + Texts{"[ActionGetVariable]"}, 1, "f(v)"},
           {{"[ActionGetVariable]"}, 2, "f(,)"},
           {push({"b", "a", "#2", "C"}) + Texts{"[ActionNewObject]"}, 1, "f(new C(a,b))"},
           {push({"a", "#9", "C"}) + Texts{"[ActionNewObject]"}, 1, "f(new C(a))"},
           {push({"a", "#1", "o", "m"}) + Texts{"[ActionNewMethod]"}, 1, "f(new o.m(a))"},
           {push({"a", "#1", "b", "#2", "#2"}) + Texts{"[ActionInitObject]"}, 1, "f({b:\"2\",a:\"1\"})"},
           {push({"x", "b", "#2", "#2147483647"}) + Texts{"[ActionInitObject]"}, 2, "f({b:\"2\"},x)"},
           {push({"x", "a", "b", "#2"}) + Texts{"[ActionInitArray]"}, 1, "f(x)"},
           {push({"x", "i", "#1", "c"}) + Texts{"[ActionImplementsOp]"}, 1, "f(x)"},
           {push({"x", "#1", "#2", "#3", "#4", "#1", "l", "t"}) + Texts{"[ActionStartDrag]"}, 1, "f(x)"},
           {push({"x", "#3", "#4", "#1", "l", "t"}) + Texts{"[ActionStartDrag]"}, 3, "f(4,3,x)"},
           {push({"x", "#0", "l", "t"}) + Texts{"[ActionStartDrag]"}, 1, "f(x)"},
           {push({"o", "c"}) + Texts{"[ActionCastOp]"}, 1, "f(o)"},
           {push({"c"}) + Texts{"[ActionCastOp]"}, 2, "f(,c)"},
           {push({"a"}) + Texts{"[ActionStop]", "[ActionPushDuplicate]", "[ActionStop]"}, 2, "f(a,a)"},
           {Texts{"[ActionPushDuplicate]", "[ActionStop]"}, 3, "f(,,)"},
       }) {
    const Texts found = argumentsAfter(row.listing, row.count);
    ASSERT_EQ(found.size(), 1U) << row.statement;
    EXPECT_EQ(found[0], row.statement);
  }
}

// Every row of the table of simple handlers: what it pops of five entries and what it pushes.
TEST_F(Replay, SimpleHandlersPopAndPushWhatTheirRowsSay) {
  struct Row {
    const char* actions;
    int pops;
    const char* pushed;  // value part; null: nothing is pushed
  } rows[] = {
      {"Pop DefineLocal2 If Call GotoFrame2 SetTarget2 RemoveSprite WaitForFrame2 Trace Delete2 With Return Throw", 1,
       nullptr},
      {"DefineLocal SetVariable GetURL2 Delete Extends", 2, nullptr},
      {"SetMember SetProperty CloneSprite", 3, nullptr},
      {"DefineFunction Jump EndDrag Try", 0, nullptr},
      {"Add Add2", 2, "+"},
      {"Subtract", 2, "-"},
      {"Multiply", 2, "*"},
      {"Divide", 2, "/"},
      {"StringAdd", 2, ""},
      {"Modulo BitAnd BitOr BitXor BitLShift BitRShift BitURShift GetProperty", 2, "0"},
      {"Equals Equals2 StrictEquals Less Less2 Greater And Or StringEquals StringGreater InstanceOf StringLess", 2,
       "true"},
      {"Not", 1, "true"},
      {"Increment Decrement ToNumber ToInteger StringLength MBStringLength CharToAscii MBCharToAscii RandomNumber "
       "Enumerate Enumerate2",
       1, "0"},
      {"ToString AsciiToChar MBAsciiToChar", 1, "NULL"},
      {"TypeOf", 1, "undefined"},
      {"TargetPath", 1, ""},
      {"StringExtract MBStringExtract", 3, "NULL"},
      {"GetTime", 0, "0"},
  };
  int checked = 0;
  for (const Row& row : rows) {
    std::istringstream names(row.actions);
    for (std::string name; names >> name; ++checked) {
      std::string expected = row.pushed == nullptr ? "f(" : std::string("f(") + row.pushed + ",";
      for (int left = 5 - row.pops; left > 0; --left)
        expected += "e" + std::to_string(left) + (left > 1 ? "," : ")");
      const int entries = 5 - row.pops + (row.pushed == nullptr ? 0 : 1);
      const std::string header = "[Action" + name + "]";
      EXPECT_EQ(argumentsAfter(push({"e1", "e2", "e3", "e4", "e5"}) + Texts{header}, entries), (Texts{expected}))
          << name;
      // A stack that is too short loses nothing and still gets the result.
      if (row.pops < 2) continue;
      const std::string shortStack = row.pushed == nullptr ? "f(e1,)" : std::string("f(") + row.pushed + ",e1)";
      EXPECT_EQ(argumentsAfter(push({"e1"}) + Texts{header}, 2), (Texts{shortStack})) << name;
    }
  }
  EXPECT_EQ(checked, 71);  // 70 rows of the table, and Try, which is passed over
}

TEST_F(Replay, EndsQuietlyWhenItBuildsTooMuch) {
  Texts listing = push({"#0", "o", "first"}) + Texts{"[ActionCallMethod]"} + push({"a"});
  for (int i = 0; i < 40; ++i)
    listing = listing + Texts{"[ActionStop]", "[ActionPushDuplicate]", "[ActionStop]", "[ActionGetMember]"};
  listing = listing + push({"#0", "o", "last"}) + Texts{"[ActionCallMethod]"};
  EXPECT_EQ(statements(listing), (Texts{"o.first()"}));
}

TEST_F(Replay, EndsQuietlyWhenItCopiesRegistersTooOften) {
  Texts listing{"[ActionDefineFunction2]",
                "ActionDefineFunction2#@x441#reg$#@x442#1#@x441#param#@x442#" + std::string(1200, 'r'),
                "ActionDefineFunction2#@x441#oper#@x442#end"};
  listing = listing + push({"#0", "o", "first"}) + Texts{"[ActionCallMethod]", "[ActionPush]"};
  std::string copies = "ActionPush";
  for (int i = 0; i < 62; ++i)
    copies += "#@x441#reg$#@x442#1";
  listing.insert(listing.end(), 2000, copies);
  listing = listing + Texts{"[ActionStop]"} + push({"#0", "o", "last"}) + Texts{"[ActionCallMethod]"};
  EXPECT_EQ(statements(listing), (Texts{"o.first()"}));
}

timespec late() {
  return {firstCheckTime.tv_sec + 21, firstCheckTime.tv_nsec};
}

TEST_F(Replay, ASpentBudgetEndsIt) {
  Texts listing = push({"x", "#1", "f"}) + Texts{"[ActionCallFunction]"};
  FlashEngine_1_00::startTimeBudget();
  FlashEngine_1_00::TESTING_ONLY_setClock(late);
  Texts found{"old"};
  EXPECT_EQ(decompiler_.SWFDeCompilerMain(listing, found), RUN_SUCCESS);
  FlashEngine_1_00::TESTING_ONLY_setClock(nullptr);
  EXPECT_EQ(found, Texts{});
}

}  // namespace
