#include "unzip/EntryPath.h"

namespace {

bool isSeparator(char c) { return c == '/' || c == '\\'; }

}  // namespace

std::string EntryPath::joined() const {
  std::string path;
  for (const std::string& component : components) {
    if (!path.empty()) path += '/';
    path += component;
  }
  return path;
}

EntryPath ParseEntryPath(const char* name, bool withoutPath) {
  EntryPath result;
  if (name == nullptr || name[0] == '\0') {
    result.kind = EntryPath::kNothing;
    return result;
  }
  if (isSeparator(name[0])) return result;

  std::string component;
  bool endsWithSeparator = false;
  for (const char* p = name;; ++p) {
    if (*p == '\0' || isSeparator(*p)) {
      if (component == "..") return result;
      if (!component.empty() && component != ".") result.components.push_back(component);
      component.clear();
      if (*p == '\0') break;
      endsWithSeparator = p[1] == '\0';
    } else {
      component += *p;
    }
  }
  if (result.components.empty()) {
    result.kind = EntryPath::kNothing;
    return result;
  }

  if (endsWithSeparator) {
    result.kind = withoutPath ? EntryPath::kNothing : EntryPath::kDirectory;
    if (withoutPath) result.components.clear();
  } else {
    result.kind = EntryPath::kFile;
    if (withoutPath) result.components.erase(result.components.begin(), result.components.end() - 1);
  }
  return result;
}
