#pragma once

#include "drawing/AcDbObjectId.h"
#include "geometry/AcGePoint3d.h"

#include <string>
#include <string_view>

// Carries an object's state, item by item, in the order in which its classes file it. Each item knows its
// type, so that a reader that asks for another type, or beyond the end, gets a status and no value. A
// failing status stays until it is reset; later reads then give zeros and that status.
class VELDRIN_API AcDbDwgFiler {
public:
    virtual ~AcDbDwgFiler() = default;

    virtual AcDb::FilerType filerType() const = 0;
    Acad::ErrorStatus filerStatus() const { return m_status; }
    void setFilerStatus(Acad::ErrorStatus status) { m_status = status; }
    void resetFilerStatus() { m_status = Acad::eOk; }

    virtual Acad::ErrorStatus readBool(bool& value) = 0;
    virtual Acad::ErrorStatus readInt8(Adesk::Int8& value) = 0;
    virtual Acad::ErrorStatus readInt16(Adesk::Int16& value) = 0;
    virtual Acad::ErrorStatus readInt32(Adesk::Int32& value) = 0;
    virtual Acad::ErrorStatus readInt64(Adesk::Int64& value) = 0;
    virtual Acad::ErrorStatus readDouble(double& value) = 0;
    virtual Acad::ErrorStatus readPoint2d(AcGePoint2d& value) = 0;
    virtual Acad::ErrorStatus readPoint3d(AcGePoint3d& value) = 0;
    virtual Acad::ErrorStatus readVector3d(AcGeVector3d& value) = 0;
    // Memory of the host that the caller frees by acdbFree; null on failure.
    virtual Acad::ErrorStatus readString(char*& value) = 0;
    virtual Acad::ErrorStatus readString(std::string& value) = 0;
    virtual Acad::ErrorStatus readBytes(std::string& value) = 0;
    // eUnknownHandle when the object named is not there; the id is then null.
    virtual Acad::ErrorStatus readHardPointerId(AcDbObjectId& value) = 0;
    virtual Acad::ErrorStatus readSoftPointerId(AcDbObjectId& value) = 0;
    virtual Acad::ErrorStatus readHardOwnershipId(AcDbObjectId& value) = 0;
    virtual Acad::ErrorStatus readSoftOwnershipId(AcDbObjectId& value) = 0;

    virtual Acad::ErrorStatus writeBool(bool value) = 0;
    virtual Acad::ErrorStatus writeInt8(Adesk::Int8 value) = 0;
    virtual Acad::ErrorStatus writeInt16(Adesk::Int16 value) = 0;
    virtual Acad::ErrorStatus writeInt32(Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus writeInt64(Adesk::Int64 value) = 0;
    virtual Acad::ErrorStatus writeDouble(double value) = 0;
    virtual Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) = 0;
    virtual Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) = 0;
    virtual Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) = 0;
    virtual Acad::ErrorStatus writeString(std::string_view value) = 0;
    virtual Acad::ErrorStatus writeBytes(std::string_view value) = 0;
    virtual Acad::ErrorStatus writeHardPointerId(const AcDbObjectId& value) = 0;
    virtual Acad::ErrorStatus writeSoftPointerId(const AcDbObjectId& value) = 0;
    virtual Acad::ErrorStatus writeHardOwnershipId(const AcDbObjectId& value) = 0;
    virtual Acad::ErrorStatus writeSoftOwnershipId(const AcDbObjectId& value) = 0;

    // Where the base part (AcDbObject and, of an entity, AcDbEntity) ends and the class's own items begin.
    // Called by the base classes while writing and reading.
    virtual Acad::ErrorStatus endBasePart() = 0;
    // Around an object that is embedded in another; AcDbObject::dwgOut and dwgIn call them.
    virtual Acad::ErrorStatus beginEmbedded(const char* className) = 0;
    virtual Acad::ErrorStatus endEmbedded() = 0;

protected:
    Acad::ErrorStatus m_status = Acad::eOk;
};
