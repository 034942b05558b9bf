#include "drawing/list_lines.h"

#include "drawing/AcDbDatabase.h"
#include "runtime/AcRxClass.h"
#include "runtime/acut.h"

#include <fmt/format.h>
#include <numbers>

namespace veldrin {

namespace {

constexpr const char* kIndent = "                  ";
constexpr int kDefaultDecimals = 4;

int decimals(const AcDbEntity& entity) {
    const AcDbDatabase* database = entity.database();
    return database ? database->header().luprec : kDefaultDecimals;
}

void print(const std::string& line) {
    acutPrintf("%s\n", line.c_str());
}

} // namespace

std::string listedLength(const AcDbEntity& entity, double value) {
    const double shown = value == 0.0 ? 0.0 : value; // no minus in front of a zero
    return fmt::format("{:9.{}f}", shown, decimals(entity));
}

std::string listedAngle(double radians) {
    return fmt::format("{:.4g}", radians * 180.0 / std::numbers::pi);
}

void listPoint(const AcDbEntity& entity, const char* label, const AcGePoint3d& point) {
    print(fmt::format("{:>23}, X={}  Y={}  Z={}", label, listedLength(entity, point.x),
                      listedLength(entity, point.y), listedLength(entity, point.z)));
}

void listValue(const char* label, const std::string& value) {
    print(fmt::format("{:>23} {}", label, value));
}

} // namespace veldrin

namespace {

std::string spaceOf(const AcDbEntity& entity) {
    const AcDbDatabase* database = entity.database();
    if (!database) return "none";
    if (entity.ownerId() == database->modelSpaceId()) return "Model space";
    if (entity.ownerId() == database->paperSpaceId()) return "Paper space";
    return "Block";
}

std::string colorText(const AcCmColor& color) {
    if (color.isByColor())
        return fmt::format("{},{},{}", color.rgb() >> 16, (color.rgb() >> 8) & 0xFF, color.rgb() & 0xFF);
    if (color.isByBlock()) return "BYBLOCK";
    return fmt::format("{}", color.colorIndex());
}

} // namespace

void AcDbEntity::subList() const {
    using veldrin::print;
    const std::string type = isA()->dxfName().empty() ? isA()->name() : isA()->dxfName();
    print(fmt::format("{}{:<9} Layer: \"{}\"", veldrin::kIndent, type, layer()));
    print(fmt::format("{}{:<10}Space: {}", veldrin::kIndent, "", spaceOf(*this)));
    if (m_colorIsSet && !m_color.isByLayer())
        print(fmt::format("{}{:<10}Color: {}", veldrin::kIndent, "", colorText(m_color)));
    const AcDbDatabase* owner = m_linetype.database();
    if (owner && m_linetype != owner->byLayerLinetype())
        print(fmt::format("{}{:<10}Linetype: \"{}\"", veldrin::kIndent, "", linetype()));
    if (m_linetypeScale != 0.0 && m_linetypeScale != 1.0)
        print(fmt::format("{}{:<10}Linetype scale: {:g}", veldrin::kIndent, "", m_linetypeScale));
    if (m_lineWeight >= 0)
        print(fmt::format("{}{:<10}Line weight: {:.2f} mm", veldrin::kIndent, "", m_lineWeight / 100.0));
    if (!m_visible) print(fmt::format("{}{:<10}Invisible", veldrin::kIndent, ""));
    if (!objectId().isNull()) print(fmt::format("{} Handle = {}", veldrin::kIndent, handle().text()));
}
