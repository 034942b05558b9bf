#pragma once

#include <string>

// Text is UTF-8 throughout. Where characters are counted, code points are counted.
using CString = std::string;
