// OK and Cancel of Query Pipe.

#include "database/tables/tblPipe.h"
#include "database/tables/tblPipeSize.h"
#include "database/tables/tblPipeSum.h"
#include "dialogs/CDialogPipeSum.h"
#include "dialogs/CodeCaptions.h"
#include "dialogs/pipe_sum_choices.h"
#include "dialogs/pipe_sum_form.h"
#include "editor/aced.h"
#include "host/LispResults.h"
#include "util/NumberText.h"

namespace plumb {

using namespace pipe_sum;

namespace {

constexpr double kLeastSpacing = 6.0; // inches; a spacing must be more

} // namespace

double CDialogPipeSum::number(int id) const {
    return TextToDouble(edit(id).GetWindowText());
}

double CDialogPipeSum::elevation(int id) const {
    return FeetTextToInches(edit(id).GetWindowText());
}

bool CDialogPipeSum::checkAbove(int id, double limit, const char* message) {
    return number(id) > limit || refuseEdit(id, message);
}

bool CDialogPipeSum::checkHanger() {
    if (list(kHangerType).selectedData() == kNoHanger) return true;
    return checkAbove(kHangerSize, 0.0, "Hanger size must be greater than zero.") &&
           checkAbove(kHangerDepth, 0.0, "Hanger depth must be greater than zero.") &&
           checkAbove(kHangerSpacing, kLeastSpacing, "Hanger spacing must be greater than six inches.");
}

void CDialogPipeSum::OnOK() {
    if (!checkHanger() || !store([this] { storeFlows(); })) return;
    giveResult();
    EndDialog(kOk);
}

void CDialogPipeSum::OnCancel() {
    acedRetNil();
    EndDialog(kCancel);
}

void CDialogPipeSum::giveResult() {
    ResultList result;
    result.listBegin();
    result.pairReal("dZ1", elevation(kZ1));
    result.pairReal("dZ2", elevation(kZ2));
    result.pairInt("ixPipeSize", static_cast<Adesk::Int32>(resultSize()));
    result.pairInt("ixLayerSystem", list(kLayerSystem).selectedData());
    result.pairInt("ixPipeType", static_cast<Adesk::Int32>(typeInForce()));
    const int table = list(kSizingTable).selectedData();
    if (table != kSameAsPrevious)
        result.pairInt("ixPipeSizingTable", table);
    else
        result.pairNil("ixPipeSizingTable");
    result.pairInt("bPTrap", check(kPTrap).GetCheck());
    result.pairInt("bTransparent", check(kTransparent).GetCheck());
    result.pairReal("dExteriorLining", check(kHasLining).GetCheck() ? number(kLining) : 0.0);
    result.pairText("sOffsetZ", codeOf(kVerticalAlignments, list(kOffsetZ).GetWindowText()));
    result.pairText("sOffsetY", codeOf(kHorizontalAlignments, list(kOffsetY).GetWindowText()));
    const int hanger = list(kHangerType).selectedData();
    result.pairInt("iHangerType", hanger);
    result.pairInt("bSizeLocked", list(kSize).selectedData() != kSizedAutomatically);
    if (hanger != kNoHanger) {
        result.pairReal("dHangerZ", elevation(kHangerZ));
        result.pairReal("dHangerSize", number(kHangerSize));
        result.pairReal("dHangerDepth", number(kHangerDepth));
        result.pairReal("dHangerStartOffset", number(kHangerStartOffset));
        result.pairReal("dHangerSpacing", number(kHangerSpacing));
        result.pairReal("dHangerEndOffset", number(kHangerEndOffset));
        result.pairReal("dHangerLeftExtension", number(kHangerLeft));
        result.pairReal("dHangerRightExtension", number(kHangerRight));
    }
    result.listFinish();
}

} // namespace plumb
