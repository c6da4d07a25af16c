// Writes the regex fuzz target's seeds for the scanners' own patterns into the
// directory named by its argument: each seed is a pattern, a NUL byte and a
// text of the kind that pattern meets.
#include <cstdio>
#include <string>

#include "APICheckEngine/PatternTexts.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  using namespace patterns;
  const struct {
    const char* name;
    std::string pattern;
    const char* text;
  } seeds[] = {
      {"alias_call", CallWithArgument("tv"), "init(1, tv);"},
      {"api_name", kMethodCall, "x.y = tv . Play ( 1 )"},
      {"assignment", kAssignmentTarget, "if (a == b) this.c.d = 1;"},
      {"calls_on_name", CallsOn("tv"), "x = tv.GetModel(); (tv.Play(getUrl(1)));"},
      {"dom_access", ElementAccessForm(), "var tv = document.getElementById(\"tv\"); p = $(\"tv\").Play();"},
      {"direct_use", DirectUse(), "document.getElementById('tv').Play(); $(\"a\").b"},
      {"element_id", kQuotedIdForms[0], "<object classid=\"clsid:X\" id = \"tv plugin\">"},
      {"embeds", kEmbedsForm, "var tv2 = document.embeds[1];"},
      {"execute", kExecuteCall, "obj.Execute( \"Start\" )"},
      {"functions", kFunctionHeader, "function init(a, b) { x : function (q) {} }"},
      {"lookup_call", LookUpMethodCall("tv"), "$(\"tv\").Play();"},
      {"object_start", kObjectStart, "<div><OBJECT classid="},
      {"swf_call", LookUpMethodName("myExt"), "getObj(myExt).GetVersion(1) f('myExt') . Play()"},
      {"tags", kTag, "<html><object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object></html>"},
  };
  for (const auto& seed : seeds) {
    const std::string path = std::string(argv[1]) + "/" + seed.name;
    FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr) return 1;
    const std::string bytes = seed.pattern + '\0' + seed.text;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
    if (std::fclose(out) != 0 || !written) return 1;
  }
  return 0;
}
