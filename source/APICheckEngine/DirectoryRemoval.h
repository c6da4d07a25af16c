// In-process recursive removal of an extraction directory.
#pragma once

#include <string>

// Removes `path` and everything below it, never following a symbolic link out
// of the tree; failures are ignored.
void RemoveDirectoryTree(const std::string& path);
