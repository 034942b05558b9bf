// namedobjdict dictsearch dictnext dictadd dictremove

#include "drawing/AcDbDictionary.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Value;

using DictionaryPointer = AcDbObjectPointer<AcDbDictionary>;

DictionaryPointer openDictionary(Args args, AcDb::OpenMode mode = AcDb::kForRead) {
    DictionaryPointer dictionary(idOf(args, 0), mode);
    if (!dictionary) args.wrong(0, "a dictionary:");
    return dictionary;
}

Value namedobjdict(Engine&, Args) {
    return enameOf(currentDatabase().namedObjectsDictionaryId());
}

Value dictsearch(Engine&, Args args) {
    AcDbObjectId id;
    const bool found = openDictionary(args)->getAt(args.string(1), id) == Acad::eOk;
    return found ? entityData(id) : Value();
}

// The object becomes the dictionary's as a copy under a new name; the one that was made without an owner
// goes.
Value dictadd(Engine&, Args args) {
    const std::string key = args.string(1);
    const UndoStep step("dictadd");
    const DictionaryPointer dictionary = openDictionary(args, AcDb::kForWrite);
    if (dictionary->has(key)) return {};
    AcDbObjectPointer<AcDbObject> given(idOf(args, 2), AcDb::kForWrite);
    if (!given) return {};
    AcDbObjectPointer<AcDbObject> copy;
    copy.acquire(given->clone());
    AcDbObjectId id;
    if (!copy || dictionary->setAt(key, copy.object(), id) != Acad::eOk) return {};
    given->erase();
    return enameOf(id);
}

Value dictremove(Engine&, Args args) {
    const UndoStep step("dictremove");
    const DictionaryPointer dictionary = openDictionary(args, AcDb::kForWrite);
    AcDbObjectId id;
    if (dictionary->getAt(args.string(1), id) != Acad::eOk) return {};
    return dictionary->remove(args.string(1)) == Acad::eOk ? enameOf(id) : Value();
}

constexpr lisp::BuiltinRow rows[] = {
    {"namedobjdict", 0, 0, namedobjdict},
    {"dictsearch", 2, 3, dictsearch},
    {"dictadd", 3, 3, dictadd},
    {"dictremove", 2, 2, dictremove},
};

} // namespace

std::span<const lisp::BuiltinRow> dictionaryFunctions() {
    return rows;
}

} // namespace veldrin::scripting
