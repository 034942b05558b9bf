#pragma once

#include <optional>
#include <string>

// Shows the prompt and gives the next line of standard input; nothing at its end. At a terminal the line can
// be edited, and earlier ones come back.
std::optional<std::string> readTypedLine(const std::string& prompt);

// True when a person types.
bool isTypedByHand();
