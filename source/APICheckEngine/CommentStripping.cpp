#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Visibility.h"

extern "C" TARVO_EXPORT int delete_comment(const char* source, int length, char* output) { return 0; }

extern "C" TARVO_EXPORT int delete_blankline(const char* source, int length, char* output) { return 0; }
