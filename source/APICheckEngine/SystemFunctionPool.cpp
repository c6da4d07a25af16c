#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"

extern "C" TARVO_EXPORT const char* const SystemFunctionPool[451] = {};
