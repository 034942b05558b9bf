#include "drawing/AcDbObjectAccess.h"
#include "files/DxfDrawingReader.h"
#include "files/header_members.h"

#include <numbers>
#include <utility>

namespace veldrin {

namespace {

// A value of the file for a member; what cannot be read leaves it as it is.
class MemberReader {
public:
    MemberReader(const std::vector<DxfGroup>& groups, std::string_view name, const AcDbDatabase& database,
                 DxfTextDecoder& decoder)
        : m_groups(groups), m_name(name), m_database(database), m_decoder(decoder) {}

    void operator()(int& value) const { readInteger(value); }
    void operator()(std::int16_t& value) const { readInteger(value); }
    void operator()(double& value) const {
        double read = 0.0;
        if (!readDxfReal(m_groups.front().value, read)) return;
        value = m_name == "ANGBASE" ? read * std::numbers::pi / 180.0 : read;
    }
    void operator()(AcDbObjectId& id) const {
        std::string name;
        m_decoder.decode(m_groups.front().value, name);
        const AcDbObjectId table = m_name == "CLAYER"    ? m_database.layerTableId()
                                   : m_name == "CELTYPE" ? m_database.linetypeTableId()
                                                         : m_database.textStyleTableId();
        const AcDbObjectId found = AcDbObjectAccess::findRecord(table, name);
        if (!found.isNull()) id = found;
    }
    void operator()(AcCmColor& color) const {
        std::int16_t index = 0;
        if (readInteger(index) && index >= 0 && index <= AcCmColor::kByLayer) color = AcCmColor(index);
    }
    void operator()(AcGePoint3d& point) const { readPoint(point); }
    void operator()(AcGeVector3d& vector) const {
        AcGePoint3d point;
        if (readPoint(point)) vector = point.asVector();
    }

private:
    template<class Integer>
    bool readInteger(Integer& value) const {
        std::int64_t read = 0;
        if (!readDxfInteger(m_groups.front().value, read) || !std::in_range<Integer>(read)) return false;
        value = static_cast<Integer>(read);
        return true;
    }
    bool readPoint(AcGePoint3d& point) const {
        double xyz[3] = {0.0, 0.0, 0.0};
        for (std::size_t i = 0; i < 3 && i < m_groups.size(); ++i)
            if (!readDxfReal(m_groups[i].value, xyz[i])) return false;
        point = {xyz[0], xyz[1], xyz[2]};
        return true;
    }

    const std::vector<DxfGroup>& m_groups;
    std::string_view m_name;
    const AcDbDatabase& m_database;
    DxfTextDecoder& m_decoder;
};

} // namespace

void DxfDrawingReader::readHeader() {
    DxfGroup group;
    std::string name;
    while (nextGroup(group)) {
        if (group.code == 0) {
            if (group.value == "ENDSEC") break;
            continue;
        }
        if (group.code == 9)
            name = group.value;
        else if (!name.empty())
            takeHeaderGroup(name, group);
    }
}

// The version and the code page decide how all texts behind them are read.
void DxfDrawingReader::takeHeaderGroup(const std::string& name, const DxfGroup& group) {
    constexpr const char* kFirstInUtf8 = "AC1021";
    if (name == "$ACADVER") {
        m_report.version = group.value;
        if (m_report.version >= kFirstInUtf8) m_decoder.setCodePage("UTF-8");
    } else if (name == "$DWGCODEPAGE" && m_report.version < kFirstInUtf8) {
        m_decoder.setCodePage(group.value);
    }
    m_header[name].push_back(group);
}

void DxfDrawingReader::applyHeader() {
    HeaderVariables header = m_database.header();
    for (const HeaderMember& row : headerMembers()) {
        const auto found = m_header.find(std::string("$") + row.name);
        if (found == m_header.end() || found->second.empty()) continue;
        const MemberReader reader(found->second, row.name, m_database, m_decoder);
        std::visit([&](auto member) { reader(header.*member); }, row.member);
    }
    m_database.setHeader(header);
}

} // namespace veldrin
