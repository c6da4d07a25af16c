// The packages of a batch: files given, package files found below the
// directories given (recognised by their first bytes), sorted, without
// repeats, and the share of one shard.
#pragma once

#include <string>
#include <vector>

// Adds the packages `path` stands for; false (with errno set) when it cannot
// be read.
bool AddPackages(const std::string& path, std::vector<std::string>& packages);
// Reads paths from `file`, one per line (blank lines and lines starting with
// "#" skipped); false when it cannot be read.
bool ReadPathList(const std::string& file, std::vector<std::string>& paths);
// Sorts and removes repeats, then keeps the packages whose position is
// `index` modulo `count`.
std::vector<std::string> ShardOf(std::vector<std::string> packages, unsigned index, unsigned count);
