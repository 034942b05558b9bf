#include "editor/command_tables.h"

namespace veldrin {

std::vector<std::span<const CommandRow>> builtInCommands() {
    return {drawCommands(),    polylineCommands(), editCommands(), layerCommands(),     styleCommands(),
            viewCommands(),    drawingCommands(),  textCommands(), blockCommands(),     insertCommands(),
            stretchCommands(), undoCommands(),     fileCommands(), clipboardCommands(), exchangeCommands()};
}

} // namespace veldrin
