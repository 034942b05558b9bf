#pragma once

#include "editor/SystemVariables.h"

#include <span>
#include <vector>

class AcDbDatabase;

namespace veldrin {

class Host;
class Document;
struct HeaderVariables;

enum class VariableKind { Integer, Real, Text, Point2d, Point3d };

// Where a variable's value is.
enum class VariableHome {
    Session, // in the host
    Drawing, // with the open drawing, not in its file
    Header,  // in the drawing's header
    Computed // nowhere; asked for when needed
};

// One variable. Of a header variable `get` and `set` work on the header, of a computed one `compute` answers,
// of others the row has the value that holds until another is set.
struct VariableRow {
    using Result = SystemVariables::Result;

    std::string name; // upper case
    VariableKind kind = VariableKind::Integer;
    VariableHome home = VariableHome::Session;
    bool readOnly = false;
    double least = 0.0, greatest = 0.0; // of a number; no limits when both are 0
    VariableValue initial;
    VariableValue (*get)(const HeaderVariables& header) = nullptr;
    Result (*set)(HeaderVariables& header, const VariableValue& value, AcDbDatabase& database) = nullptr;
    VariableValue (*compute)(Host& host, Document* document) = nullptr; // the document may be null
    bool needsDrawing = false;                                          // of a computed one
};

// The rows by name.
std::span<const VariableRow> variableTable();
const VariableRow* findVariable(std::string_view name);

void addHeaderVariables(std::vector<VariableRow>& rows);
void addKeptVariables(std::vector<VariableRow>& rows);
void addComputedVariables(std::vector<VariableRow>& rows);

} // namespace veldrin
