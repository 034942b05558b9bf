#pragma once

#include <string>

namespace veldrin {

class SqlFile;

// Why a drawing file cannot be read at all, in words; empty when it seems to be possible.
std::string whyNotReadable(const std::string& path);

// The engine takes a last page that is cut off for one that ends in zeros, so its length is looked at.
bool hasWholeLength(SqlFile& file, const std::string& path);

// The line about a drawing with which something failed, whatever the reason said: "Cannot open drawing ...".
std::string complaint(const char* what, const std::string& path, std::string reason);

} // namespace veldrin
