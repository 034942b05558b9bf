#include "drawing/AcDbObject.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbObjectExtras.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/RecordFiler.h"
#include "drawing/UndoLog.h"
#include "runtime/AcRxMacros.h"
#include "runtime/CException.h"

#include <limits>

using veldrin::Slot;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObject, AcRxObject);

AcDbObject::AcDbObject() = default;
AcDbObject::~AcDbObject() = default;

namespace {

constexpr std::uint8_t kMostNotified = 200;

// Opens for write: files the state before, for undo.
Acad::ErrorStatus beginWriting(AcDbObjectId id) {
    Slot& slot = *AcDbObjectAccess::slot(id);
    const Acad::ErrorStatus status = id.database()->undoLog().fileState(id);
    if (status != Acad::eOk) return status;
    slot.writer = slot.changed = true;
    slot.erasedBefore = slot.erased;
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    object = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    Slot* const slot = AcDbObjectAccess::slot(id);
    if (!slot) return Acad::ePermanentlyErased;
    if (slot->erased && !openErased) return Acad::eWasErased;
    if (mode == AcDb::kForNotify) {
        if (slot->notified == kMostNotified) return Acad::eWasOpenForRead;
        ++slot->notified;
    } else if (slot->writer) {
        return Acad::eWasOpenForWrite;
    } else if (mode == AcDb::kForRead) {
        if (slot->readers == std::numeric_limits<std::uint16_t>::max()) return Acad::eWasOpenForRead;
        ++slot->readers;
    } else {
        if (slot->readers > 0) return Acad::eWasOpenForRead;
        if (const Acad::ErrorStatus status = beginWriting(id); status != Acad::eOk) return status;
    }
    object = slot->object;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) {
    assertWriteEnabled();
    if (!owner.isNull() && !m_id.isNull() && owner.database() != database()) return Acad::eWrongDatabase;
    m_owner = owner;
    return Acad::eOk;
}

// An opening for notification lies within the others and is closed before them.
Acad::ErrorStatus AcDbObject::close() {
    Slot* const slot = AcDbObjectAccess::slot(m_id);
    if (!slot) return Acad::eNotInDatabase;
    if (slot->notified > 0) {
        --slot->notified;
        return Acad::eOk;
    }
    if (!slot->isOpen()) return Acad::eNotOpenForRead;
    const Acad::ErrorStatus status = subClose();
    if (slot->writer)
        finishWriting();
    else
        --slot->readers;
    return status;
}

void AcDbObject::finishWriting() {
    Slot& slot = *AcDbObjectAccess::slot(m_id);
    slot.writer = slot.fresh = false;
    database()->undoLog().forgetOpening(m_id);
    AcDbObjectAccess::touch(*this);
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    Slot* const slot = AcDbObjectAccess::slot(m_id);
    if (!slot) return Acad::eNotInDatabase;
    if (slot->writer) return Acad::eWasOpenForWrite;
    if (slot->readers == 0) return Acad::eNotOpenForRead;
    if (slot->readers > 1) return Acad::eWasOpenForRead;
    const Acad::ErrorStatus status = beginWriting(m_id);
    if (status == Acad::eOk) slot->readers = 0;
    return status;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    Slot* const slot = AcDbObjectAccess::slot(m_id);
    if (!slot) return Acad::eNotInDatabase;
    if (!slot->writer) return Acad::eNotOpenForWrite;
    finishWriting();
    slot->readers = 1;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::cancel() {
    Slot* const slot = AcDbObjectAccess::slot(m_id);
    if (!slot) return Acad::eNotInDatabase;
    if (!slot->writer) return close();
    Acad::ErrorStatus status = Acad::eOk;
    if (slot->fresh) {
        AcDbObjectAccess::setErased(m_id, true);
    } else {
        const std::string before = database()->undoLog().stateAtOpening(m_id);
        status = before.empty() ? Acad::eNotApplicable : veldrin::restoreState(*this, before);
        AcDbObjectAccess::setErased(m_id, slot->erasedBefore);
    }
    finishWriting();
    return status;
}

bool AcDbObject::isReadEnabled() const {
    if (m_id.isNull()) return true;
    const Slot* const slot = AcDbObjectAccess::slot(m_id);
    return slot && (slot->isOpen() || slot->notified > 0);
}

bool AcDbObject::isWriteEnabled() const {
    if (m_id.isNull()) return true;
    const Slot* const slot = AcDbObjectAccess::slot(m_id);
    return slot && slot->writer;
}

bool AcDbObject::isErased() const {
    return !m_id.isNull() && m_id.isErased();
}

void AcDbObject::assertReadEnabled() const {
    if (!isReadEnabled()) throw CException("An object was read that is not open for reading.");
}

void AcDbObject::assertWriteEnabled(bool, bool) {
    if (!isWriteEnabled()) throw CException("An object was changed that is not open for writing.");
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
    if (m_id.isNull()) return Acad::eNotInDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (m_id.isErased() == erasing) return Acad::eOk;
    const Acad::ErrorStatus status = subErase(erasing);
    if (status == Acad::eOk) AcDbObjectAccess::setErased(m_id, erasing);
    return status;
}

Acad::ErrorStatus AcDbObject::subErase(bool) {
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::subClose() {
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::audit(AcDbAuditInfo*) {
    assertReadEnabled();
    return Acad::eOk;
}

void AcDbObject::saveAs(AcGiWorldDraw*, AcDb::SaveType) {}

AcDbObject* AcDbObject::clone() const {
    veldrin::RecordWriter writer(AcDb::kCopyFiler);
    std::unique_ptr<AcDbObject> copy = veldrin::emptyLike(*this);
    if (!copy || dwgOutFields(&writer) != Acad::eOk) return nullptr;
    veldrin::RecordReader reader(AcDb::kCopyFiler, writer.database(), writer.record());
    if (copy->dwgInFields(&reader) != Acad::eOk) return nullptr;
    copy->m_owner.setNull();
    AcDbObjectAccess::setExtensionDictionary(*copy, {});
    return copy.release();
}
