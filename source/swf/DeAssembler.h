// SWF disassembler: reads a plain or compressed SWF file, walks its tags and
// lists the action records of its script blocks as text lines.
#pragma once

#include <string>
#include <vector>

#include "APICheckEngine/HostInterface.h"

class DeAssembler {
 public:
  DeAssembler();
  virtual ~DeAssembler();

  // Appends the listing of every script block of the file at `path` to `lines`.
  RunResult SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines);
};
