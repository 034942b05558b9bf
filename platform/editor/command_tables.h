#pragma once

#include "editor/CommandRegistry.h"

#include <span>
#include <vector>

namespace veldrin {

// The built-in commands, a table for each group; each group has its file.
std::vector<std::span<const CommandRow>> builtInCommands();

std::span<const CommandRow> drawCommands();
std::span<const CommandRow> polylineCommands();
std::span<const CommandRow> editCommands();
std::span<const CommandRow> layerCommands();
std::span<const CommandRow> styleCommands();
std::span<const CommandRow> viewCommands();
std::span<const CommandRow> undoCommands();
std::span<const CommandRow> drawingCommands();
std::span<const CommandRow> fileCommands();
std::span<const CommandRow> clipboardCommands();
std::span<const CommandRow> exchangeCommands();
std::span<const CommandRow> textCommands();
std::span<const CommandRow> blockCommands();
std::span<const CommandRow> insertCommands();
std::span<const CommandRow> stretchCommands();

// Any system variable whose name is typed as a command.
Task<void> setVariableCommand(CommandContext& context);

} // namespace veldrin
