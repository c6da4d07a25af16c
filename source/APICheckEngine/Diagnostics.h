// Diagnostic entry points for the command-line host: they run the engine's own
// SWF disassembler and decompiler on one file, outside an analysis.
#pragma once

#include <string>
#include <vector>

#include "tarvo/HostInterface.h"

extern "C" {
// The listing lines of the SWF file at `path`, made by `engine`'s disassembler.
RunResult tarvo_swf_listing(IAppAnalysis* engine, const char* path, std::vector<std::string>* lines);
// The call statements that `engine`'s decompiler rebuilds from that listing;
// the code is the listing's when the file could not be listed in full.
RunResult tarvo_swf_statements(IAppAnalysis* engine, const char* path, std::vector<std::string>* statements);
}
