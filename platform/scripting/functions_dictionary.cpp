// namedobjdict dictsearch dictnext dictadd dictremove dictrename

#include "drawing/AcDbDictionary.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"

#include <memory>

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

Value dictadd(Engine&, Args args) {
    const std::string key = args.string(1);
    const UndoStep step("dictadd");
    const DictionaryPointer dictionary = openDictionary(args, AcDb::kForWrite);
    return dictionary->adopt(key, idOf(args, 2)) == Acad::eOk ? args[2] : Value();
}

Value dictremove(Engine&, Args args) {
    const UndoStep step("dictremove");
    const DictionaryPointer dictionary = openDictionary(args, AcDb::kForWrite);
    AcDbObjectId id;
    if (dictionary->getAt(args.string(1), id) != Acad::eOk) return {};
    return dictionary->remove(args.string(1)) == Acad::eOk ? enameOf(id) : Value();
}

// The new name, nil when the entry is missing or the name taken.
Value dictrename(Engine&, Args args) {
    const std::string from = args.string(1), to = args.string(2);
    const UndoStep step("dictrename");
    const DictionaryPointer dictionary = openDictionary(args, AcDb::kForWrite);
    return dictionary->rename(from, to) == Acad::eOk ? args[2] : Value();
}

// The dictionary that is walked and the entry behind which the walk goes on.
struct DictionaryWalk {
    AcDbObjectId dictionary;
    std::string last;
};

Value dictnext(DictionaryWalk& walk, Args args) {
    if (args.size() == 0) throw lisp::Error::tooFewArguments();
    if (args.size() > 2) throw lisp::Error::tooManyArguments();
    const DictionaryPointer dictionary = openDictionary(args);
    const auto& entries = dictionary->entries();
    const bool begins = args.has(1) || walk.dictionary != dictionary->objectId();
    const auto next = begins ? entries.begin() : entries.upper_bound(walk.last);
    walk.dictionary = dictionary->objectId();
    if (next == entries.end()) return {};
    walk.last = next->first;
    return entityData(next->second);
}

constexpr lisp::BuiltinRow rows[] = {
    {"namedobjdict", 0, 0, namedobjdict}, {"dictsearch", 2, 3, dictsearch}, {"dictadd", 3, 3, dictadd},
    {"dictremove", 2, 2, dictremove},     {"dictrename", 3, 3, dictrename},
};

} // namespace

std::span<const lisp::BuiltinRow> dictionaryFunctions() {
    return rows;
}

void defineDictionaryWalk(Engine& lisp) {
    const auto walk = std::make_shared<DictionaryWalk>();
    lisp.defineExternal("dictnext", [walk](Engine&, Args args) { return dictnext(*walk, args); });
}

} // namespace veldrin::scripting
