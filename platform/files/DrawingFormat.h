#pragma once

#include "files/SqlFile.h"

#include <string>

// What a drawing file holds. It is one database file:
//   objects   a row for each object that is not erased: handle, class, owner's handle, record
//   classes   what a program needs to know of the classes of these objects, should it not have them
//   pictures  what entities of a module's classes drew at the last save, for programs without the module
//   header    values that belong to the drawing, by name
// The engine's application number marks it as a drawing, the user version is the version of the format.
namespace veldrin {

inline constexpr int kDrawingFormatVersion = 1;

// Makes the tables in a file that is empty, in a transaction of the caller's.
bool makeDrawingFormat(SqlFile& file);

// False, with the file's error set, unless the file is a drawing of a version that this program reads.
bool checkDrawingFormat(SqlFile& file);

// The mark of the save that wrote the file last, never the same twice.
std::string newSaveId();
std::string readSaveId(SqlFile& file);
bool writeSaveId(SqlFile& file, const std::string& saveId);

} // namespace veldrin
