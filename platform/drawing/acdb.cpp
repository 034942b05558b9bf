#include "drawing/acdb.h"

#include <algorithm>
#include <iterator>

namespace {

struct StatusName {
    Acad::ErrorStatus status;
    const char* name;
};

constexpr StatusName kNames[] = {
#define VELDRIN_STATUS(NAME)                                                                                 \
    { Acad::NAME, #NAME }
    VELDRIN_STATUS(eOk),
    VELDRIN_STATUS(eNotImplementedYet),
    VELDRIN_STATUS(eNotApplicable),
    VELDRIN_STATUS(eInvalidInput),
    VELDRIN_STATUS(eOutOfMemory),
    VELDRIN_STATUS(eHandleExists),
    VELDRIN_STATUS(eNullHandle),
    VELDRIN_STATUS(eUnknownHandle),
    VELDRIN_STATUS(eNullObjectPointer),
    VELDRIN_STATUS(eNullObjectId),
    VELDRIN_STATUS(eContainerNotEmpty),
    VELDRIN_STATUS(eKeyNotFound),
    VELDRIN_STATUS(eDuplicateKey),
    VELDRIN_STATUS(eInvalidIndex),
    VELDRIN_STATUS(eBadSubclassMarker),
    VELDRIN_STATUS(eNotInDatabase),
    VELDRIN_STATUS(eWrongDatabase),
    VELDRIN_STATUS(eAlreadyInDatabase),
    VELDRIN_STATUS(eEndOfObject),
    VELDRIN_STATUS(eBadRecord),
    VELDRIN_STATUS(eNotOpenForRead),
    VELDRIN_STATUS(eNotOpenForWrite),
    VELDRIN_STATUS(eWasOpenForRead),
    VELDRIN_STATUS(eWasOpenForWrite),
    VELDRIN_STATUS(eWasErased),
    VELDRIN_STATUS(ePermanentlyErased),
    VELDRIN_STATUS(eNotThatKindOfClass),
    VELDRIN_STATUS(eLockViolation),
    VELDRIN_STATUS(eDuplicateRecordName),
    VELDRIN_STATUS(eInvalidName),
    VELDRIN_STATUS(eRecordInUse),
    VELDRIN_STATUS(eOnLockedLayer),
    VELDRIN_STATUS(eDegenerateGeometry),
    VELDRIN_STATUS(eNullExtents),
    VELDRIN_STATUS(eCannotScaleNonUniformly),
    VELDRIN_STATUS(eFileNotFound),
    VELDRIN_STATUS(eFileAccessErr),
    VELDRIN_STATUS(eFileDamaged),
    VELDRIN_STATUS(eFileLocked),
    VELDRIN_STATUS(eNoDocument),
    VELDRIN_STATUS(eMakeMeProxy),
#undef VELDRIN_STATUS
};

} // namespace

const char* acadErrorStatusText(Acad::ErrorStatus status) {
    const auto* const row = std::ranges::find(kNames, status, &StatusName::status);
    return row == std::end(kNames) ? "unknown status" : row->name;
}
