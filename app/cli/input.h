#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

// Shows the prompt and gives the next line of standard input; nothing at its end. At a terminal the line can
// be edited, and earlier ones come back.
std::optional<std::string> readTypedLine(const std::string& prompt);

// True when a person types.
bool isTypedByHand();

// What may be meant by the beginning of a word, for the Tab key. The second text is the line before the word.
using Completer = std::function<std::vector<std::string>(const std::string& word, const std::string& before)>;
void setCompleter(Completer completer);
