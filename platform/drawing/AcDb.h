#pragma once

#include "runtime/Acad.h"

#include <cstdint>

class AcDbDatabase;
class AcDbObject;
class AcDbEntity;
class AcDbCurve;
class AcDbDwgFiler;
class AcDbDxfFiler;
class AcDbSpline;
class AcDbIdMapping;
class AcGiWorldDraw;
class AcGiViewportDraw;
class AcGiDrawable;
class AcGiSubEntityTraits;
class AcRxClass;

namespace Adesk {
using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using GsMarker = std::int64_t;
} // namespace Adesk

namespace AcDb {

enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

// What a filer is for; values as records of older programs carry them.
enum FilerType {
    kFileFiler = 0,
    kCopyFiler = 1,
    kUndoFiler = 2,
    kBagFiler = 3,
    kIdXlateFiler = 4,
    kPageFiler = 5,
    kDeepCloneFiler = 6,
    kWblockCloneFiler = 8,
    kPurgeFiler = 9,
};

enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };

enum OsnapMode {
    kOsModeEnd = 1,
    kOsModeMid = 2,
    kOsModeCen = 3,
    kOsModeNode = 4,
    kOsModeQuad = 5,
    kOsModeIns = 7,
    kOsModePerp = 8,
    kOsModeTan = 9,
    kOsModeNear = 10,
    kOsModeInt = 11,
};

// Hundredths of a millimetre; below zero, where the weight comes from.
using LineWeight = std::int16_t;
inline constexpr LineWeight kLnWtByLayer = -1;
inline constexpr LineWeight kLnWtByBlock = -2;
inline constexpr LineWeight kLnWtByLwDefault = -3;

enum Visibility { kInvisible = 1, kVisible = 0 };

enum SaveType { kR12Save = 0, kR13Save = 1 };

enum DxfCode : std::int16_t {
    kDxfInvalid = -9999,
    kDxfHeaderId = -2,
    kDxfEntityName = -1,
    kDxfStart = 0,
    kDxfText = 1,
    kDxfHandle = 5,
    kDxfLinetypeName = 6,
    kDxfTextStyleName = 7,
    kDxfLayerName = 8,
    kDxfXCoord = 10,
    kDxfLinetypeScale = 48,
    kDxfVisibility = 60,
    kDxfColor = 62,
    kDxfSubclass = 100,
    kDxfNormalX = 210,
    kDxfSoftPointerId = 330,
    kDxfHardPointerId = 340,
    kDxfSoftOwnershipId = 350,
    kDxfHardOwnershipId = 360,
    kDxfLineWeight = 370,
    kDxfTrueColor = 420,
    kDxfXDataStart = -3,
    kDxfRegAppName = 1001,
};

} // namespace AcDb
