// ActionScript decompiler: replays a disassembly listing on a symbolic stack
// machine and collects the call statements it rebuilds.
#pragma once

#include <string>
#include <vector>

class DeCompiler {
 public:
  DeCompiler();
  virtual ~DeCompiler();

  // Runs the listing; `statements` receives the call statements. Always 1000.
  unsigned SWFDeCompilerMain(std::vector<std::string>& listing, std::vector<std::string>& statements);
};
