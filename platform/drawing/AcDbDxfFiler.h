#pragma once

#include "drawing/AcDbObjectId.h"
#include "geometry/AcGePoint3d.h"

#include <string>
#include <string_view>

// One group of exchange data.
struct AcDbDxfItem {
    int code = 0;
    enum Kind { kNone, kText, kReal, kPoint, kInt16, kInt32, kBool, kId, kHandle, kBytes } kind = kNone;
    std::string text;         // kText, kHandle, kBytes
    double real = 0.0;        // kReal
    AcGePoint3d point;        // kPoint
    std::int64_t integer = 0; // kInt16, kInt32, kBool
    AcDbObjectId id;          // kId
};

// Carries an object's exchange data: groups of a code and a value. The same interface serves files and the
// entity lists of Lisp.
class VELDRIN_API AcDbDxfFiler {
public:
    static constexpr int kDfltPrec = -1;

    virtual ~AcDbDxfFiler() = default;

    Acad::ErrorStatus filerStatus() const { return m_status; }
    void setFilerStatus(Acad::ErrorStatus status) { m_status = status; }
    void resetFilerStatus() { m_status = Acad::eOk; }
    virtual AcDb::FilerType filerType() const { return AcDb::kFileFiler; }
    virtual AcDbDatabase* database() const = 0;
    // True for the lists that Lisp reads: groups at their default are left out as the dialect does.
    virtual bool isEntityList() const = 0;

    // The next item; a status other than eOk at the end of the object's data.
    virtual Acad::ErrorStatus readItem(AcDbDxfItem& item) = 0;
    // Gives the item that was read last back, to be read again.
    virtual Acad::ErrorStatus pushBackItem() = 0;
    // Steps over the subclass marker if the reader stands at the one named; else stays and gives false.
    virtual bool atSubclassData(const char* className) = 0;

    virtual Acad::ErrorStatus writeItem(int code, std::string_view text) = 0;
    virtual Acad::ErrorStatus writeItem(int code, const AcDbObjectId& id) = 0;
    virtual Acad::ErrorStatus writeDouble(int code, double value, int precision = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writePoint3d(int code, const AcGePoint3d& value, int precision = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeInt16(int code, int value) = 0;
    virtual Acad::ErrorStatus writeInt32(int code, std::int32_t value) = 0;
    virtual Acad::ErrorStatus writeBool(int code, bool value) = 0;
    virtual Acad::ErrorStatus writeBytes(int code, std::string_view value) = 0;

    // Of entities whose points lie in a plane of their own; files have no third coordinate for those.
    virtual Acad::ErrorStatus writePoint2d(int code, const AcGePoint2d& value) {
        return writePoint3d(code, {value.x, value.y, 0.0});
    }
    Acad::ErrorStatus writeVector3d(int code, const AcGeVector3d& v) {
        return writePoint3d(code, {v.x, v.y, v.z});
    }

protected:
    Acad::ErrorStatus m_status = Acad::eOk;
};
