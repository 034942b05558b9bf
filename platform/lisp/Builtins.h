// The built-ins that need no drawing, a table for each group.
#pragma once

#include "lisp/Engine.h"

#include <span>

namespace veldrin::lisp {

std::span<const BuiltinRow> controlBuiltins();
std::span<const BuiltinRow> numberBuiltins();
std::span<const BuiltinRow> geometryBuiltins();
std::span<const BuiltinRow> listBuiltins();
std::span<const BuiltinRow> listSearchBuiltins();
std::span<const BuiltinRow> textBuiltins();
std::span<const BuiltinRow> textSearchBuiltins();
std::span<const BuiltinRow> unitBuiltins();
std::span<const BuiltinRow> outputBuiltins();
std::span<const BuiltinRow> fileBuiltins();
std::span<const BuiltinRow> fileNameBuiltins();
std::span<const BuiltinRow> settingBuiltins();
std::span<const BuiltinRow> sessionBuiltins();

} // namespace veldrin::lisp
