#pragma once

#include "drawing/AcDbDxfFiler.h"

namespace veldrin {

// A filer that only reads: what asks it to write makes its status eNotApplicable.
class DxfReadingFiler : public AcDbDxfFiler {
public:
    Acad::ErrorStatus writeItem(int, std::string_view) final { return refuse(); }
    Acad::ErrorStatus writeItem(int, const AcDbObjectId&) final { return refuse(); }
    Acad::ErrorStatus writeDouble(int, double, int) final { return refuse(); }
    Acad::ErrorStatus writePoint3d(int, const AcGePoint3d&, int) final { return refuse(); }
    Acad::ErrorStatus writeInt16(int, int) final { return refuse(); }
    Acad::ErrorStatus writeInt32(int, std::int32_t) final { return refuse(); }
    Acad::ErrorStatus writeBool(int, bool) final { return refuse(); }
    Acad::ErrorStatus writeBytes(int, std::string_view) final { return refuse(); }

private:
    Acad::ErrorStatus refuse() { return m_status = Acad::eNotApplicable; }
};

// The same for one that only writes.
class DxfWritingFiler : public AcDbDxfFiler {
public:
    Acad::ErrorStatus readItem(AcDbDxfItem&) final { return m_status = Acad::eNotApplicable; }
    Acad::ErrorStatus pushBackItem() final { return m_status = Acad::eNotApplicable; }
    bool atSubclassData(const char*) final { return false; }
};

} // namespace veldrin
