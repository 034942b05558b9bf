// tblsearch tblnext tblobjname regapp

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbRegAppTable.h"
#include "editor/command_names.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "scripting/tables.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <map>
#include <memory>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

// The record behind which tblnext goes on, by table.
using Walk = std::map<std::string, AcDbObjectId>;

constexpr std::string_view emptyTables[] = {"VIEW", "UCS", "VPORT", "DIMSTYLE"};

// Null for the kinds of records of which drawings have none here.
AcDbObjectId tableNamed(Args args, std::size_t i) {
    const AcDbDatabase& database = currentDatabase();
    const std::string name = asciiUpperCase(args.text(i));
    if (name == "LAYER") return database.layerTableId();
    if (name == "LTYPE") return database.linetypeTableId();
    if (name == "STYLE") return database.textStyleTableId();
    if (name == "BLOCK") return database.blockTableId();
    if (name == "APPID") return database.regAppTableId();
    if (std::ranges::find(emptyTables, name) != std::end(emptyTables)) return {};
    args.wrong(i, "a table's name:");
}

// A block is shown as its BLOCK, though without what makes that an entity.
Value blockData(const AcDbBlockTableRecord& block) {
    lisp::ListBuilder list;
    list.add(Value::cons(Value::integer(0), Value::text("BLOCK")));
    list.add(Value::cons(Value::integer(2), Value::text(block.getName())));
    list.add(Value::cons(Value::integer(70), Value::integer(block.blockFlags())));
    list.add(Value::cons(Value::integer(10), pointValue(block.origin())));
    list.add(Value::cons(Value::integer(-2), enameOf(block.firstEntity())));
    return list.finish();
}

// As the table functions show a record: without names, owners, handles and markers.
Value recordData(AcDbObjectId id) {
    if (const AcDbObjectPointer<AcDbBlockTableRecord> block(id); block) return blockData(*block);
    lisp::ListBuilder list;
    const Value data = entityData(id);
    bool inControl = false;
    for (const Value& group : lisp::ListView(data)) {
        const int code = group.car().asInteger();
        if (code == 102) {
            inControl = group.cdr().isText() && group.cdr().asText().starts_with('{');
            continue;
        }
        const bool isHead =
            code == -1 || code == 5 || code == 100 || code == 330 || code == 360 || code == 105;
        if (!inControl && !isHead) list.add(group);
    }
    return list.finish();
}

Value tblobjname(Engine&, Args args) {
    const AcDbObjectId table = tableNamed(args, 0);
    if (table.isNull()) return {};
    const AcDbObjectId record = recordNamed(table, args.string(1));
    const AcDbObjectPointer<AcDbBlockTableRecord> block(record);
    return enameOf(block ? block->beginId() : record);
}

bool isSpace(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(id);
    return block && block->isLayout();
}

Value tblnext(Walk& walk, Args args) {
    if (args.size() == 0) throw Error::tooFewArguments();
    if (args.size() > 2) throw Error::tooManyArguments();
    const AcDbObjectId tableId = tableNamed(args, 0);
    const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
    if (!table) return {};
    AcDbObjectId& last = walk[asciiUpperCase(args.text(0))];
    if (args.has(1) || last.database() != tableId.database()) last.setNull();
    const std::vector<AcDbObjectId> ids = table->recordIds();
    auto next = last.isNull() ? ids.begin() : std::ranges::find(ids, last);
    if (!last.isNull() && next != ids.end()) ++next;
    while (next != ids.end() && isSpace(*next)) ++next;
    if (next == ids.end()) return {};
    last = *next;
    return recordData(last);
}

Value tblsearch(Walk& walk, Args args) {
    if (args.size() < 2) throw Error::tooFewArguments();
    if (args.size() > 3) throw Error::tooManyArguments();
    const AcDbObjectId table = tableNamed(args, 0);
    const AcDbObjectId record = table.isNull() ? AcDbObjectId() : recordNamed(table, args.string(1));
    if (record.isNull()) return {};
    if (args.has(2)) walk[asciiUpperCase(args.text(0))] = record;
    return recordData(record);
}

// The name, or nil when it is there already.
Value regapp(Engine&, Args args) {
    const AcDbDatabase& database = currentDatabase();
    const UndoStep step("regapp");
    const AcDbObjectPointer<AcDbRegAppTable> table(database.regAppTableId(), AcDb::kForWrite);
    AcDbObjectPointer<AcDbRegAppTableRecord> record;
    record.create();
    if (!table || record->setName(args.string(0)) != Acad::eOk || table->add(record.object()) != Acad::eOk)
        return {};
    return args[0];
}

constexpr lisp::BuiltinRow rows[] = {
    {"tblobjname", 2, 2, tblobjname},
    {"regapp", 1, 1, regapp},
};

} // namespace

std::span<const lisp::BuiltinRow> tableFunctions() {
    return rows;
}

void defineTableWalk(Engine& lisp) {
    const auto walk = std::make_shared<Walk>();
    lisp.defineExternal("tblnext", [walk](Engine&, Args args) { return tblnext(*walk, args); });
    lisp.defineExternal("tblsearch", [walk](Engine&, Args args) { return tblsearch(*walk, args); });
}

} // namespace veldrin::scripting
