// Walking directories by descriptor, never through a symbolic link.
#pragma once

#include <string>
#include <vector>

// Walks go no deeper than this below their start, so that a tree cannot run
// the process out of descriptors or stack; extraction never makes deeper
// trees (entry names are at most 255 bytes).
constexpr int kMaxDirectoryDepth = 256;

// Names of the entries of the open directory `fd` (without "." and ".."), in
// the order the file system gives them; `fd` stays open and owned by the
// caller. Empty when the directory cannot be read.
std::vector<std::string> ListDirectory(int fd);

// Opens `name` below `parentFd` as a directory without following a final
// symbolic link; -1 when it is not a directory or cannot be opened.
int OpenSubdirectory(int parentFd, const char* name);
