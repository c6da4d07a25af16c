#include "decompiler/DeCompiler.h"

DeCompiler::DeCompiler() {}
DeCompiler::~DeCompiler() {}

unsigned DeCompiler::SWFDeCompilerMain(std::vector<std::string>& listing, std::vector<std::string>& statements) {
  statements.clear();
  return 1000;
}
