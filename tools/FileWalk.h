// The regular files below a directory, in sorted order, depth first, without
// following links: how the tools turn a directory given into files.
#pragma once

#include <string>
#include <vector>

void CollectFiles(const std::string& dir, std::vector<std::string>& out);
