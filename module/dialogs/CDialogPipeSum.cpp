#include "dialogs/CDialogPipeSum.h"

#include "database/CDBConnection.h"
#include "database/GlobalSettings.h"
#include "database/tables/tblGlobal.h"
#include "database/tables/tblPipe.h"
#include "database/tables/tblPipeSize.h"
#include "database/tables/tblPipeSum.h"
#include "dialogs/CodeCaptions.h"
#include "dialogs/QueryRows.h"
#include "dialogs/pipe_sum_choices.h"
#include "dialogs/pipe_sum_form.h"
#include "editor/aced.h"
#include "host/LispArguments.h"
#include "host/LispCall.h"
#include "util/NumberText.h"

namespace plumb {

using namespace pipe_sum;

namespace {

constexpr int kLiningDecimals = 2;
constexpr int kHangerDecimals = 5;
constexpr const char* kProposedLining = "EXTERIOR LINING WIDTH";

// What pipe-query-elevationTileCheck answers, a bit for each elevation that is tied to another pipe's.
constexpr Adesk::Int32 kStartIsTied = 1;
constexpr Adesk::Int32 kEndIsTied = 2;
constexpr Adesk::Int32 kBothAreTied = kStartIsTied | kEndIsTied;

constexpr int kHangerEdits[] = {kHangerSize,    kHangerDepth, kHangerStartOffset, kHangerEndOffset,
                                kHangerSpacing, kHangerLeft,  kHangerRight,       kHangerZ};

} // namespace

CDialogPipeSum::CDialogPipeSum() : ProjectDialog(kForm), m_grid(*this, kFlowGrid) {
    m_grid.mayEdit = [this](CGridCtrl::Cell at) {
        const bool isHeading = m_grid.GetTextByField(at.row, kFieldCategory).empty();
        return at.column == kValue && !isHeading && m_grid.GetTextByField(at.row, kFieldFixed) != kNoText;
    };
    onSelection(kType, [this] {
        if (const auto left = selectTypeWithSizes()) warnOfTypeWithoutSizes(*left);
        relabelFlows();
    });
    onDoubleClick(kType, [this] { OnOK(); });
    onClick(kEditCategories, [this] {
        askLisp("plumb-customization-project-editPipeSumCategory");
        relabelFlows();
    });
    onClick(kHasLining, [this] {
        enableLining();
        if (!check(kHasLining).GetCheck()) return;
        edit(kLining).SetFocus();
        edit(kLining).SelectAll();
    });
    onSelection(kHangerType, [this] { enableHanger(list(kHangerType).selectedData() != kNoHanger); });
}

CDialogPipeSum::~CDialogPipeSum() = default;

void CDialogPipeSum::Setup(CDBConnection* connection, bool isStandards, std::int32_t ixPipe,
                           bool usableTypesForm) {
    setDatabase(connection, isStandards);
    m_ixPipe = ixPipe;
    m_usableTypesForm = usableTypesForm;
    m_pipe = std::make_unique<tblPipe>(connection);
    m_sum = std::make_unique<tblPipeSum>(connection);
    m_size = std::make_unique<tblPipeSize>(isStandards, connection);
}

void CDialogPipeSum::Release() {
    m_pipe.reset();
    m_sum.reset();
    m_size.reset();
}

long CDialogPipeSum::selectedType() const {
    return list(kType).selectedData();
}

long CDialogPipeSum::typeInForce() const {
    return selectedType() != 0 ? selectedType() : m_openingType;
}

void CDialogPipeSum::load() {
    if (m_pipe->Seek(m_ixPipe)) loadPipe();
    focusFirstFlow();
    disableTiedElevations();
    fillSizes({});
    noteTypesWithSizes();
    if (const auto left = selectTypeWithSizes()) {
        relabelFlows();
        warnOfTypeWithoutSizes(*left);
    }
}

void CDialogPipeSum::loadPipe() {
    const tblPipe& pipe = *m_pipe;
    m_storedSize = pipe.ixPipeSize;
    m_storedSizingTable = pipe.ixPipeSizingTable.isNull() ? 0 : pipe.ixPipeSizingTable.get();
    m_isSizeLocked = pipe.bSizeLocked;
    m_openingType = pipe.ixPipeType;

    edit(kZ1).SetWindowText(InchesToFeetText(pipe.dZ1));
    edit(kZ2).SetWindowText(InchesToFeetText(pipe.dZ2));
    for (const CodeCaption& choice : kVerticalAlignments) list(kOffsetZ).AddString(choice.caption);
    for (const CodeCaption& choice : kHorizontalAlignments) list(kOffsetY).AddString(choice.caption);
    list(kOffsetZ).SetWindowText(captionOf(kVerticalAlignments, pipe.sOffsetZ));
    list(kOffsetY).SetWindowText(captionOf(kHorizontalAlignments, pipe.sOffsetY));
    loadHanger();
    addItems(list(kLayerSystem), connection(), "Select ixLayerSystem, sDescription from tblLayerSystem");
    selectItem(list(kLayerSystem), pipe.ixLayerSystem);
    fillTypes();
    showStaticValues();
    loadLining();
    check(kPTrap).SetCheck(pipe.bPTrap);
    check(kTransparent).SetCheck(pipe.bTransparent);
    loadFlows();
}

void CDialogPipeSum::loadHanger() {
    const tblPipe& pipe = *m_pipe;
    const auto show = [this](int id, double inches) {
        edit(id).SetWindowText(DoubleToText(inches, kHangerDecimals, true));
    };
    show(kHangerSize, pipe.dHangerSize);
    show(kHangerDepth, pipe.dHangerDepth);
    show(kHangerSpacing, pipe.dHangerSpacing);
    show(kHangerStartOffset, pipe.dHangerStartOffset);
    show(kHangerEndOffset, pipe.dHangerEndOffset);
    show(kHangerLeft, pipe.dHangerLeftExtension);
    show(kHangerRight, pipe.dHangerRightExtension);
    edit(kHangerZ).SetWindowText(InchesToFeetText(pipe.dHangerZ));
    for (int type = 0; type < static_cast<int>(std::size(kHangerTypes)); ++type)
        list(kHangerType).AddString(kHangerTypes[type], type);
    list(kHangerType).SetCurSel(pipe.iHangerType);
    enableHanger(pipe.iHangerType != kNoHanger);
}

void CDialogPipeSum::enableHanger(bool hasHanger) {
    for (const int id : kHangerEdits) edit(id).EnableWindow(hasHanger);
}

// A pipe without insulation is proposed the project's usual width.
void CDialogPipeSum::loadLining() {
    const double lining = m_pipe->dExteriorLining;
    tblGlobal globals(&connection());
    const double shown = lining != 0.0 ? lining : GetGlobalNumber(&globals, kProposedLining);
    edit(kLining).SetWindowText(DoubleToText(shown, kLiningDecimals, true));
    check(kHasLining).SetCheck(lining != 0.0);
    enableLining();
}

void CDialogPipeSum::enableLining() {
    edit(kLining).EnableWindow(check(kHasLining).GetCheck());
}

void CDialogPipeSum::showStaticValues() {
    const double farthest = m_pipe->dDistanceToFarthestFixture;
    const double source = m_pipe->dDistanceFromSource;
    const double height = m_pipe->dMaxFixtureZ;
    const LispAnswer answer = callLisp(ResbufChain(acutBuildList(
        RTSTR, "plumb-pipeSum-StaticValues", RTREAL, farthest, RTREAL, source, RTREAL, height, 0)));
    if (!answer.succeeded || answer.isNil()) return;
    const resbuf* cursor = answer.items.get();
    for (const int id : {kFarthestValue, kHeightValue}) {
        CString text = "0";
        if (!argText(cursor, text)) argSkip(cursor);
        control(id)->SetWindowText(text);
    }
}

void CDialogPipeSum::disableTiedElevations() {
    const LispAnswer answer =
        callLisp(ResbufChain(acutBuildList(RTSTR, "pipe-query-elevationTileCheck", RTLONG, m_ixPipe, 0)));
    const resbuf* cursor = answer.items.get();
    Adesk::Int32 tied = 0;
    if (!answer.succeeded || !argInt(cursor, tied) || tied < 0 || tied > kBothAreTied) return;
    const auto disable = [this](int id, int captionId) {
        control(id)->EnableWindow(false);
        control(captionId)->EnableWindow(false);
    };
    if (tied & kStartIsTied) disable(kZ1, kZ1Label);
    if (tied & kEndIsTied) disable(kZ2, kZ2Label);
}

} // namespace plumb
