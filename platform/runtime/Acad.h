#pragma once

// Status codes of the host. Zero is success; a caller that gets anything else finds everything as it
// was before the call, unless the operation says otherwise.
namespace Acad {

enum ErrorStatus : int {
    eOk = 0,
    eNotImplementedYet = 1,
    eNotApplicable = 2,
    eInvalidInput = 3,
    eOutOfMemory = 6,
    eHandleExists = 10,
    eNullHandle = 11,
    eUnknownHandle = 13,
    eNullObjectPointer = 15,
    eNullObjectId = 16,
    eContainerNotEmpty = 18,
    eKeyNotFound = 21,
    eDuplicateKey = 22,
    eInvalidIndex = 23,
    eBadSubclassMarker = 52, // an expected subclass marker is missing in exchange data
    eNotInDatabase = 62,
    eWrongDatabase = 63,
    eAlreadyInDatabase = 64,
    eEndOfObject = 70, // a reader came to the end of a record
    eBadRecord = 71,   // a record's item is of another type than the reader asked for
    eNotOpenForRead = 80,
    eNotOpenForWrite = 81,
    eWasOpenForRead = 82,
    eWasOpenForWrite = 83,
    eWasErased = 84,
    ePermanentlyErased = 85,
    eNotThatKindOfClass = 86,
    eLockViolation = 87,
    eDuplicateRecordName = 90,
    eInvalidName = 91,
    eRecordInUse = 92,
    eOnLockedLayer = 93,
    eDegenerateGeometry = 100,
    eNullExtents = 101,
    eCannotScaleNonUniformly = 102,
    eFileNotFound = 110,
    eFileAccessErr = 111,
    eFileDamaged = 112,
    eFileLocked = 113,
    eNoDocument = 120,
    eMakeMeProxy = 301,
};

} // namespace Acad
