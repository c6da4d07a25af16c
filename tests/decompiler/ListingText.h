// Replays of listings for the decompiler tests.
#pragma once

#include <string>
#include <vector>

#include "tarvo/HostInterface.h"
#include "APICheckEngine/TimeBudget.h"
#include "decompiler/DeCompiler.h"

#include "support/ListingLines.h"

// Replays a listing on a fresh budget; the machine's state stays for inspection.
struct Replay {
  DeCompiler machine;
  Lines statements;

  explicit Replay(Lines lines) {
    firstTimeVal = TimeBudget::nowMicros();
    machine.SWFDeCompilerMain(lines, statements);
  }
  Lines stack() const { return {machine.operandStack.begin(), machine.operandStack.end()}; }
};
