#pragma once

#include "lisp/Engine.h"

#include <span>

namespace veldrin::scripting {

// The functions, a table for each group; each group has its file.
std::span<const lisp::BuiltinRow> entityFunctions();
std::span<const lisp::BuiltinRow> selectionFunctions();
std::span<const lisp::BuiltinRow> tableFunctions();
std::span<const lisp::BuiltinRow> dictionaryFunctions();
std::span<const lisp::BuiltinRow> commandFunctions();
std::span<const lisp::BuiltinRow> inputFunctions();
std::span<const lisp::BuiltinRow> variableFunctions();
std::span<const lisp::BuiltinRow> curveFunctions();
std::span<const lisp::BuiltinRow> documentFunctions();
std::span<const lisp::BuiltinRow> projectFunctions();
std::span<const lisp::BuiltinRow> dialogFunctions();
std::span<const lisp::BuiltinRow> gridFunctions();
std::span<const lisp::BuiltinRow> graphicsFunctions();
std::span<const lisp::BuiltinRow> recordFunctions();
std::span<const lisp::BuiltinRow> editingFunctions();
std::span<const lisp::BuiltinRow> windowFunctions();
std::span<const lisp::BuiltinRow> screenFunctions();
std::span<const lisp::BuiltinRow> moduleFunctions();

// What entsel, nentsel and nentselp share: (NAME POINT) of the entity that the user picks.
lisp::Value selectEntity(lisp::Engine& lisp, lisp::Args args);

// Those that remember something from call to call: tblnext, dictnext, entmake, entmakex.
void defineTableWalk(lisp::Engine& lisp);
void defineDictionaryWalk(lisp::Engine& lisp);
void defineEntityMaking(lisp::Engine& lisp);

} // namespace veldrin::scripting
