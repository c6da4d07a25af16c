#include "swf/DeAssembler.h"

DeAssembler::DeAssembler() {}
DeAssembler::~DeAssembler() {}

RunResult DeAssembler::SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines) { return RUN_SUCCESS; }
