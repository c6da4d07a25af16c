// Shared set-up of the disassembler tests: a fresh time budget, and the
// listing of action bytes or of whole files.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "APICheckEngine/TimeBudget.h"
#include "support/EngineHost.h"
#include "support/ListingLines.h"
#include "support/LogCapture.h"
#include "support/SwfWriter.h"
#include "swf/DeAssembler.h"

using namespace listing;

class ListingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    firstTimeVal = TimeBudget::nowMicros();
    LogCapture::clear();
  }

  // The listing of one script block at `origin` in its file.
  Lines listBlock(const std::string& bytes, uint32_t origin = 0) {
    Lines lines;
    deAssembler.getActionBlock(reinterpret_cast<const uint8_t*>(bytes.data()), static_cast<uint32_t>(bytes.size()),
                               lines, origin);
    return lines;
  }
  Lines listBlock(const swf::ActionBuilder& actions, uint32_t origin = 0) { return listBlock(actions.bytes(), origin); }

  // Writes `bytes` as a file and lists it; `code` receives the result.
  Lines listFile(const std::string& bytes, RunResult* code = nullptr) {
    std::string path = dir.file("movie.swf");
    WriteFile(path, bytes);
    Lines lines;
    RunResult result = deAssembler.SWFDeAssemblerMain(path, lines);
    if (code != nullptr) *code = result;
    return lines;
  }

  DeAssembler deAssembler;
  TempDir dir;
};
