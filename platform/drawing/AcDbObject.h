#pragma once

#include "drawing/AcDbObjectId.h"
#include "runtime/AcRxObject.h"
#include "runtime/resbuf.h"

#include <memory>

class AcDbAuditInfo;

// Anything that lives in a drawing's database, and what may: an object that was not added yet, or never
// will be (a temporary), has a null id, may be changed freely and is deleted by whoever holds it.
//
// Life: made -> added (open for write) -> closed -> opened and closed any number of times -> erased <->
// unerased. Many readers or one writer hold an object open. The first open for write in an undo step files
// the state before it (see UndoLog.h); there is no other door to a change.
class VELDRIN_API AcDbObject : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObject);

    AcDbObject();
    ~AcDbObject() override;

    AcDbObjectId objectId() const { return m_id; }
    AcDbObjectId ownerId() const { return m_owner; }
    Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
    AcDbHandle handle() const { return m_id.handle(); }
    AcDbDatabase* database() const { return m_id.database(); }

    // Open state
    Acad::ErrorStatus close();
    Acad::ErrorStatus upgradeOpen();   // from read to write; fails while others read
    Acad::ErrorStatus downgradeOpen(); // from write to read
    // Closes and takes back what this opening changed; an object that was not closed since it was added is
    // erased. What was added to a block or table meanwhile stays.
    Acad::ErrorStatus cancel();
    bool isReadEnabled() const;
    bool isWriteEnabled() const;
    bool isErased() const;
    Acad::ErrorStatus erase(bool erasing = true);
    // A fault of the caller, raised as CException, when the object is not open that way.
    void assertReadEnabled() const;
    void assertWriteEnabled(bool autoUndo = true, bool recordModified = true);

    // Filing. The outer pair marks an object that is embedded in another; the inner pair carries the items.
    // An override files what its base class does, then its own items. The base part, as endBasePart() of the
    // filer marks it, ends with AcDbObject, but of an entity with AcDbEntity: AcDbObject's functions leave
    // the mark to AcDbEntity's for whatever is of that kind.
    Acad::ErrorStatus dwgIn(AcDbDwgFiler* filer);
    Acad::ErrorStatus dwgOut(AcDbDwgFiler* filer) const;
    Acad::ErrorStatus dxfIn(AcDbDxfFiler* filer);
    Acad::ErrorStatus dxfOut(AcDbDxfFiler* filer) const;
    virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer);
    virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const;
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;
    virtual Acad::ErrorStatus audit(AcDbAuditInfo* info);
    // Draws for programs that lack the class, into a format other than the drawing's own.
    virtual void saveAs(AcGiWorldDraw* draw, AcDb::SaveType type);

    // Extended data: a chain that begins with 1001 and an application's name. Reading gives a copy that the
    // caller frees, null without one; without a name, of all applications. Setting replaces what the
    // application had; a name alone removes it. Errors: eInvalidInput for a chain of another form,
    // eKeyNotFound for an application that the drawing does not know.
    resbuf* xData(const char* regappName = nullptr) const;
    Acad::ErrorStatus setXData(const resbuf* xdata);

    AcDbObjectId extensionDictionary() const;
    Acad::ErrorStatus createExtensionDictionary();

    // A copy with the same class and state that is in no database.
    AcDbObject* clone() const;

protected:
    // Called when the erased flag is about to change; a status other than eOk refuses.
    virtual Acad::ErrorStatus subErase(bool erasing);
    virtual Acad::ErrorStatus subClose();

private:
    friend class AcDbObjectAccess; // the drawing room's own door to the state below
    void finishWriting();
    struct Extras;
    Extras& extras();

    AcDbObjectId m_id;
    AcDbObjectId m_owner;
    std::unique_ptr<Extras> m_extras;
};

// Opens by id. Errors: eNullObjectId, eWasErased (unless erased objects are asked for), eWasOpenForWrite,
// eWasOpenForRead, eNotThatKindOfClass, ePermanentlyErased when the drawing is gone.
VELDRIN_API Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                                 bool openErased = false);

template<class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    object = nullptr;
    AcDbObject* opened = nullptr;
    const Acad::ErrorStatus status = acdbOpenAcDbObject(opened, id, mode, openErased);
    if (status != Acad::eOk) return status;
    object = T::cast(opened);
    if (object) return Acad::eOk;
    opened->close();
    return Acad::eNotThatKindOfClass;
}

// Holds an open object and closes it on every way out; deletes an object that has no id.
template<class T>
class AcDbObjectPointer {
public:
    AcDbObjectPointer() = default;
    explicit AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                               bool openErased = false) {
        open(id, mode, openErased);
    }
    ~AcDbObjectPointer() { release(); }
    AcDbObjectPointer(AcDbObjectPointer&& other) noexcept
        : m_object(other.m_object), m_status(other.m_status) {
        other.m_object = nullptr;
    }
    AcDbObjectPointer& operator=(AcDbObjectPointer&& other) noexcept {
        if (this != &other) {
            release();
            m_object = other.m_object;
            m_status = other.m_status;
            other.m_object = nullptr;
        }
        return *this;
    }

    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
        release();
        return m_status = acdbOpenObject(m_object, id, mode, openErased);
    }
    // Takes over an object that is open, or that was never added.
    void acquire(T* object) {
        release();
        m_object = object;
        m_status = object ? Acad::eOk : Acad::eNullObjectPointer;
    }
    Acad::ErrorStatus create() {
        acquire(new T);
        return m_status;
    }
    Acad::ErrorStatus openStatus() const { return m_status; }
    T* object() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    Acad::ErrorStatus close() {
        release();
        return Acad::eOk;
    }

private:
    void release() {
        if (!m_object) return;
        if (m_object->objectId().isNull())
            delete m_object;
        else
            m_object->close();
        m_object = nullptr;
    }

    T* m_object = nullptr;
    Acad::ErrorStatus m_status = Acad::eNullObjectPointer;
};
