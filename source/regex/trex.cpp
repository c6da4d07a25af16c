// Placeholder until the matcher lands: nothing compiles.
#include "regex/trex.h"

#include "APICheckEngine/Visibility.h"

extern "C" {
TARVO_EXPORT TrexExpression* g_exp = nullptr;
TARVO_EXPORT const char* g_limitAddress = nullptr;

TARVO_EXPORT TrexExpression* trex_compile(const char* pattern, const char** error) {
  if (error) *error = "unexpected character";
  g_exp = nullptr;
  return nullptr;
}
TARVO_EXPORT void trex_free(TrexExpression* exp) {}
TARVO_EXPORT int trex_match(TrexExpression* exp, const char* text) { return 0; }
TARVO_EXPORT int trex_search(TrexExpression* exp, const char* text, const char** out_begin, const char** out_end) {
  return 0;
}
TARVO_EXPORT int trex_searchrange(TrexExpression* exp, const char* begin, const char* end, const char** out_begin,
                                  const char** out_end) {
  return 0;
}
TARVO_EXPORT int trex_getsubexpcount(TrexExpression* exp) { return 0; }
TARVO_EXPORT int trex_getsubexp(TrexExpression* exp, int n, TrexSubMatch* sub) { return 0; }
}
