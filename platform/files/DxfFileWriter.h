#pragma once

#include "drawing/DxfFilerSides.h"
#include "files/DxfOutput.h"

#include <functional>

namespace veldrin {

// Exchange data of objects into a file. Ids are written as handles; those of nothing, or of what is erased,
// as 0.
class DxfFileWriter final : public DxfWritingFiler {
public:
    DxfFileWriter(DxfOutput& out, AcDbDatabase* database) : m_out(out), m_database(database) {}
    ~DxfFileWriter() override;

    // What is to stand at the end of the next object's part of AcDbEntity.
    void setEntityTail(std::function<void()> tail) { m_tail = std::move(tail); }
    // Writes it where the object had no part behind that of AcDbEntity.
    void flushEntityTail();

    AcDbDatabase* database() const override { return m_database; }
    bool isEntityList() const override { return false; }

    Acad::ErrorStatus writeItem(int code, std::string_view text) override;
    Acad::ErrorStatus writeItem(int code, const AcDbObjectId& id) override;
    Acad::ErrorStatus writeDouble(int code, double value, int precision) override;
    Acad::ErrorStatus writePoint3d(int code, const AcGePoint3d& value, int precision) override;
    Acad::ErrorStatus writePoint2d(int code, const AcGePoint2d& value) override;
    Acad::ErrorStatus writeInt16(int code, int value) override;
    Acad::ErrorStatus writeInt32(int code, std::int32_t value) override;
    Acad::ErrorStatus writeBool(int code, bool value) override;
    Acad::ErrorStatus writeBytes(int code, std::string_view value) override;

private:
    DxfOutput& m_out;
    AcDbDatabase* m_database;
    std::function<void()> m_tail;
};

} // namespace veldrin
