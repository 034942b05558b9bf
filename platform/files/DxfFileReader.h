#pragma once

#include "drawing/DxfFilerSides.h"
#include "files/DxfInput.h"
#include "files/dxf_texts.h"

#include <functional>
#include <string>
#include <vector>

namespace veldrin {

// The groups of one object from an exchange file, as its class reads them. Markers of classes are obeyed
// where there are any. Points are put together, handles are looked up, texts are decoded.
class DxfFileReader final : public DxfReadingFiler {
public:
    using HandleMap = std::function<AcDbObjectId(std::uint64_t handle)>;

    DxfFileReader(AcDbDatabase& database, DxfTextDecoder& decoder, HandleMap handles);
    ~DxfFileReader() override;

    // The next object's groups: what stands behind its type, the head, controls and the picture of an entity
    // left out.
    void start(const std::vector<DxfGroup>& groups);
    // What a value should have been, and the line of its group; empty when all of them could be read.
    const std::string& expected() const { return m_expected; }
    std::uint32_t line() const { return m_line; }
    std::size_t position() const { return m_at; } // of the group that comes next
    const HandleMap& handles() const { return m_handles; }

    AcDbDatabase* database() const override { return &m_database; }
    bool isEntityList() const override { return false; }

    Acad::ErrorStatus readItem(AcDbDxfItem& item) override;
    Acad::ErrorStatus pushBackItem() override;
    bool atSubclassData(const char* className) override;

private:
    double realOf(const DxfGroup& group);
    std::int64_t integerOf(const DxfGroup& group);
    void readPoint(const DxfGroup& group, AcGePoint3d& point);
    void fail(const DxfGroup& group, const char* expected);

    AcDbDatabase& m_database;
    DxfTextDecoder& m_decoder;
    HandleMap m_handles;
    const std::vector<DxfGroup>* m_groups = nullptr;
    std::size_t m_at = 0;
    std::size_t m_before = 0; // where the last item began
    bool m_hasMarkers = false;
    std::string m_expected;
    std::uint32_t m_line = 0;
};

// A number as files have them; false for a text that is none.
bool readDxfReal(std::string_view text, double& value);
bool readDxfInteger(std::string_view text, std::int64_t& value);
// 0 for a text that is no handle.
std::uint64_t dxfHandle(std::string_view text);
// Bytes from their hexadecimal digits.
std::string dxfBytes(std::string_view digits);

} // namespace veldrin
