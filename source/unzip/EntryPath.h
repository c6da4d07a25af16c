// Turning the name stored for a package entry into a path that stays inside
// the extraction directory.
#pragma once

#include <string>
#include <vector>

struct EntryPath {
  enum Kind { kFile, kDirectory, kNothing, kUnsafe };
  Kind kind = kUnsafe;
  // Components below the extraction directory, never empty, ".", ".." or
  // containing a separator.
  std::vector<std::string> components;
  std::string joined() const;  // components joined with "/"
};

// Reads an entry name (zero-terminated, as stored). Both "/" and "\" separate
// components; a name ending in either is a directory. Empty and "."
// components are dropped. A name that starts with a separator (absolute) or
// has a ".." component is kUnsafe; one with no component left names nothing
// (kNothing). With `withoutPath`
// only the last component of a file is kept and a directory is kNothing.
EntryPath ParseEntryPath(const char* name, bool withoutPath);
