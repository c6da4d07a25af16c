// What an HTML page contributes to the analysis: its plug-in <object>
// elements and the script fragments (inline scripts, event-handler attributes).
#pragma once

#include "deep/ScriptBindings.h"

namespace tarvo_deep {

struct HtmlPage {
  TreePtr tree;
  std::vector<PluginElement> elements;  // in document order
  std::vector<TSNode> scripts;          // nodes of the page tree holding JavaScript
};

bool IsHtmlPath(const std::string& path);
HtmlPage ReadHtmlPage(const std::string& text);

}  // namespace tarvo_deep
