// The flow grid of Query Pipe: what the user has fixed and what was calculated, by flow category.

#include "database/CDBConnection.h"
#include "database/tables/tblPipe.h"
#include "database/tables/tblPipeSum.h"
#include "dialogs/CDialogPipeSum.h"
#include "dialogs/QueryRows.h"
#include "dialogs/pipe_sum_choices.h"
#include "dialogs/pipe_sum_form.h"
#include "editor/aced.h"
#include "host/LispArguments.h"
#include "host/LispCall.h"
#include "util/NumberText.h"

#include <cstdlib>

namespace plumb {

using namespace pipe_sum;

namespace {

constexpr int kFlowDecimals = 5;

CString flowText(double value) {
    return DoubleToText(value, kFlowDecimals, true);
}

} // namespace

// The flow categories of a pipe type, the base first.
class CDialogPipeSum::Categories {
public:
    Categories(CDBConnection& connection, long type)
        : m_rows(connection, "select ixPipeSumCategory, sName from tblPipeSumCategory where ixPipeType = " +
                                 std::to_string(type) + " order by iOrder") {}
    std::size_t size() const { return m_rows.size(); }
    long id(std::size_t at) const { return m_rows[at].integer(0); }
    CString name(std::size_t at) const { return m_rows[at].text(1); }
    bool isKnown() const { return !m_rows.hasFailed(); }

private:
    QueryRows m_rows;
};

void CDialogPipeSum::loadFlows() {
    const Categories categories(connection(), m_openingType);
    loadFixedFlows(categories);
    loadCalculatedFlows(categories);
}

void CDialogPipeSum::loadFixedFlows(const Categories& categories) {
    addHeading("Fixed Values", true);
    m_storedFixed.clear();
    for (std::size_t at = 0; at < categories.size(); ++at) {
        const double value = storedFlow(categories.id(at), true);
        addFlow(m_grid.GetRowCount(), categories.id(at), categories.name(at), true, flowText(value));
        m_storedFixed.push_back(value);
    }
}

// Lisp's total in the base's unit stands behind the base's value, which it may differ from.
void CDialogPipeSum::loadCalculatedFlows(const Categories& categories) {
    addHeading("Calculated Values", false);
    const double converted = convertedFlow();
    for (std::size_t at = 0; at < categories.size(); ++at) {
        CString value = flowText(storedFlow(categories.id(at), false));
        if (at == 0 && converted > 0.0 && categories.size() > 1) value += " (" + flowText(converted) + ")";
        addFlow(m_grid.GetRowCount(), categories.id(at), categories.name(at), false, value);
    }
}

double CDialogPipeSum::storedFlow(long category, bool isFixed) {
    const QueryRows rows(connection(),
                         "select ixPipeSum, bFixed, dValue from tblPipeSum where ixPipeSumCategory = " +
                             std::to_string(category) + " and ixPipe = " + std::to_string(m_ixPipe) +
                             " and bFixed = " + (isFixed ? kYesText : kNoText));
    return rows.isEmpty() ? 0.0 : rows[0].real(2);
}

double CDialogPipeSum::convertedFlow() const {
    const LispAnswer answer =
        callLisp(ResbufChain(acutBuildList(RTSTR, "pipeSumCategory-convertFlow", RTLONG, m_ixPipe, 0)));
    const resbuf* cursor = answer.items.get();
    double flow = 0.0;
    return answer.succeeded && argRealStrict(cursor, flow) ? flow : 0.0;
}

void CDialogPipeSum::addHeading(const char* caption, bool isFixed) {
    const int row = m_grid.AppendRow();
    m_grid.SetTextByField(row, kFieldFixed, isFixed ? kYesText : kNoText);
    m_grid.SetTextByField(row, kFieldName, caption);
    m_grid.lookHeading(row);
}

void CDialogPipeSum::addFlow(int row, long category, const CString& name, bool isFixed,
                             const CString& value) {
    m_grid.InsertRow(row);
    m_grid.SetTextByField(row, kFieldCategory, std::to_string(category));
    m_grid.SetTextByField(row, kFieldFixed, isFixed ? kYesText : kNoText);
    m_grid.SetTextByField(row, kFieldName, name);
    m_grid.SetTextByField(row, kFieldValue, value);
}

void CDialogPipeSum::focusFirstFlow() {
    for (int row = kFirstFlowRow; row < m_grid.GetRowCount(); ++row)
        if (!m_grid.GetTextByField(row, kFieldCategory).empty()) {
            m_grid.SetFocusCell(row, kName);
            return;
        }
}

// The rows of another type, or of categories that were edited. Values stay where they stand: they go with
// the place, not with the category.
void CDialogPipeSum::relabelFlows() {
    const Categories categories(connection(), typeInForce());
    if (!categories.isKnown()) return;
    if (m_grid.GetRowCount() >= kFirstFlowRow) {
        const int heading = relabel(kFirstFlowRow, categories, true);
        relabel(heading + 1, categories, false);
        m_grid.AutoSizeColumns();
    }
    const bool hadTable = list(kSizingTable).selectedData() != kSameAsPrevious;
    const bool wasAutomatic = list(kSize).selectedData() == kSizedAutomatically;
    fillSizes(wasAutomatic ? CString() : list(kSize).GetWindowText());
    list(kSizingTable).SetCurSel(hadTable && list(kSizingTable).GetCount() > 1 ? 1 : 0);
}

// From that row on, as far as there are rows of that kind; the row behind them.
int CDialogPipeSum::relabel(int row, const Categories& categories, bool isFixed) {
    const CString kind = isFixed ? kYesText : kNoText;
    const auto isOfKind = [&](int at) {
        return at < m_grid.GetRowCount() && m_grid.GetTextByField(at, kFieldFixed) == kind;
    };
    for (std::size_t at = 0; at < categories.size(); ++at, ++row) {
        if (isOfKind(row)) {
            m_grid.SetTextByField(row, kFieldCategory, std::to_string(categories.id(at)));
            m_grid.SetTextByField(row, kFieldName, categories.name(at));
        } else {
            const double value = isFixed && at < m_storedFixed.size() ? m_storedFixed[at] : 0.0;
            addFlow(row, categories.id(at), categories.name(at), isFixed, flowText(value));
        }
    }
    while (isOfKind(row)) m_grid.DeleteRow(row);
    return row;
}

// The old categories' flows go with their type. A pipe that was deleted meanwhile has none.
void CDialogPipeSum::storeFlows() {
    if (!m_pipe->Seek(m_ixPipe)) return;
    if (typeInForce() != m_openingType)
        connection().Execute("delete from tblPipeSum where ixPipe = " + std::to_string(m_ixPipe));
    for (int row = kFirstFlowRow; row < m_grid.GetRowCount(); ++row) storeFlow(row);
}

void CDialogPipeSum::storeFlow(int row) {
    const int category = std::atoi(m_grid.GetTextByField(row, kFieldCategory).c_str());
    if (category <= 0) return;
    const bool isFixed = m_grid.GetTextByField(row, kFieldFixed) == kYesText;
    const CString text = m_grid.GetTextByField(row, kFieldValue);
    const CString shown = text.substr(0, text.find(' ')); // without the converted flow
    const double value = TextToDouble(text);
    tblPipeSum& sum = *m_sum;
    if (sum.Seek(m_ixPipe, category, isFixed)) {
        // What is shown of the stored value counts, so that one of more decimals stays as it is.
        if (sum.dValue != 0.0 && shown == flowText(sum.dValue)) return;
        if (value == 0.0) return sum.Delete();
        sum.Edit();
    } else {
        if (value == 0.0) return;
        sum.AddNew();
        sum.ixPipe = m_ixPipe;
        sum.ixPipeSumCategory = category;
        sum.bFixed = isFixed;
    }
    sum.dValue = value;
    sum.Update();
}

} // namespace plumb
