#pragma once

#include "dao/COleVariant.h"

class CDaoTableDef;

namespace plumb {

// Creates the fields of a schema list in a table's definition, and their indexes. A schema list is the flat
// image of a Lisp list of fields, with the texts "*RTLB*" and "*RTLE*" for its brackets. A field is its name,
// its type word, behind "TEXT" its size, whether it is required, its default, and an index word: "" for none,
// "I" for a field that numbers the records, "D" for a descending index, anything else for an ascending one,
// with up to two more values: unique, primary.
//
// False when the list turns out wrong; the fields before that place are created. Throws what the definition
// throws.
bool createFields(CDaoTableDef& table, const COleVariant& schemaList);

} // namespace plumb
