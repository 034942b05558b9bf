// The lists of types, sizes and sizing tables in Query Pipe.

#include "database/tables/tblPipe.h"
#include "database/tables/tblPipeSize.h"
#include "dialogs/CDialogPipeSum.h"
#include "dialogs/QueryRows.h"
#include "dialogs/pipe_sum_choices.h"
#include "dialogs/pipe_sum_form.h"
#include "editor/aced.h"
#include "host/LispArguments.h"
#include "host/LispCall.h"

#include <algorithm>

namespace plumb {

using namespace pipe_sum;

namespace {

constexpr const char* kNoSizes =
    "No sizes exist. Close this window and open the project's Pipe Size dialog in "
    "the Customization menu to create new ones.";
constexpr Adesk::Int32 kNoTypes = -1; // of pipe-query-getNumber

struct UsableType {
    Adesk::Int32 id = 0;
    CString name;
};

// Two lists as they come from Lisp: ("startlist" id id ...) and (name name ...).
std::vector<UsableType> readTypes(const resbuf* cursor) {
    std::vector<UsableType> types;
    CString text;
    Adesk::Int32 id = 0;
    if (!argListBegin(cursor) || !argText(cursor, text)) return types;
    while (argInt(cursor, id)) types.push_back({id, {}});
    if (!argListEnd(cursor) || !argListBegin(cursor)) return {};
    std::size_t named = 0;
    while (named < types.size() && argText(cursor, text)) types[named++].name = text;
    types.resize(named);
    return types;
}

} // namespace

void CDialogPipeSum::fillTypes() {
    LispAnswer answer = callLisp("pipe-query-getNumber");
    const resbuf* cursor = answer.items.get();
    Adesk::Int32 number = kNoTypes;
    if (!answer.succeeded || !argInt(cursor, number) || number == kNoTypes) return;
    const char* name = "pipe-usableTypes-withPipe-arx";
    answer = callLisp(ResbufChain(
        m_usableTypesForm ? acutBuildList(RTSTR, name, RTLONG, m_ixPipe, RTNIL, RTLONG, number, 0)
                          : acutBuildList(RTSTR, name, RTLONG, m_ixPipe, RTLONG, number, RTNIL, 0)));
    if (!answer.succeeded) return;
    for (const UsableType& type : readTypes(answer.items.get())) list(kType).AddString(type.name, type.id);
    selectItem(list(kType), m_pipe->ixPipeType);
}

// Tells the user when there is none.
void CDialogPipeSum::noteTypesWithSizes() {
    m_hasSizes.clear();
    for (int item = 0; item < list(kType).GetCount(); ++item)
        m_hasSizes.push_back(m_size->SeekPipeType(list(kType).GetItemData(item)));
    if (std::find(m_hasSizes.begin(), m_hasSizes.end(), true) == m_hasSizes.end()) tellUser(kNoSizes);
}

// Goes on from a type without sizes to the next that has some, round to the first; the name of the one that
// it left.
std::optional<CString> CDialogPipeSum::selectTypeWithSizes() {
    const int selected = list(kType).GetCurSel();
    const int count = list(kType).GetCount();
    const auto hasSizes = [this](int item) { return m_hasSizes[static_cast<std::size_t>(item)]; };
    if (selected >= 0 && hasSizes(selected)) return {};
    for (int step = 1; step <= count; ++step) {
        const int item = (selected + step) % count;
        if (!hasSizes(item)) continue;
        const CString left = list(kType).GetText(selected);
        list(kType).SetCurSel(item);
        return left;
    }
    return {};
}

void CDialogPipeSum::warnOfTypeWithoutSizes(const CString& type) {
    warnUser("No sizes exist for " + type + ". Automatically selecting a new type.");
    SetActiveWindow();
}

// Sizes of the selected type. What was selected before is selected again by its label; a pipe that is sized
// automatically shows behind that what it has now.
void CDialogPipeSum::fillSizes(const CString& previous) {
    ListControl& sizes = list(kSize);
    sizes.ResetContent();
    m_currentType = selectedType();
    CString automatic = "Sized Automatically";
    int selected = ListControl::kNone;
    bool isPreviousFound = false;
    const QueryRows rows(connection(), "SELECT ixPipeSize, sLabel FROM tblPipeSize WHERE ixPipeType = " +
                                           std::to_string(m_currentType) + " ORDER BY dInteriorDiameter");
    for (const auto& row : rows) {
        const CString label = row.text(1);
        const int item = sizes.AddString(label, static_cast<int>(row.integer(0)));
        if (!previous.empty() && label == previous) {
            selected = item;
            isPreviousFound = true;
        } else if (row.integer(0) == m_storedSize) {
            if (!isPreviousFound) selected = item;
            automatic += " (" + label + ")";
        }
    }
    sizes.InsertString(0, automatic, kSizedAutomatically);
    const bool isAutomatic = selected == ListControl::kNone || (!m_isSizeLocked && previous.empty());
    sizes.SetCurSel(isAutomatic ? 0 : selected + 1);
    fillSizingTables();
}

void CDialogPipeSum::fillSizingTables() {
    ListControl& tables = list(kSizingTable);
    tables.ResetContent();
    tables.AddString("Same as Previous", kSameAsPrevious);
    addItems(tables, connection(),
             "SELECT ixPipeSizingTable, sName FROM tblPipeSizingTable WHERE ixPipeType = " +
                 std::to_string(m_currentType) + " and bActive = -1 ORDER BY iSortOrder");
    selectItem(tables, m_storedSizingTable);
}

// The selected size. A pipe that is sized automatically takes the first one of a new type, and keeps its own
// otherwise.
long CDialogPipeSum::resultSize() {
    long size = list(kSize).selectedData();
    if (size == kSizedAutomatically && m_currentType != m_openingType && list(kSize).GetCount() > 1)
        size = list(kSize).GetItemData(1); // the smallest: they stand by their diameters
    return size == kSizedAutomatically ? m_storedSize : size;
}

} // namespace plumb
