#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbTextStyleTable.h"
#include "editor/VariableTable.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <limits>

namespace veldrin {

namespace {

using Result = SystemVariables::Result;

constexpr double kGreatest = 1e99;
constexpr double kLeastPositive = std::numeric_limits<double>::min();

template<int HeaderVariables::*member>
VariableRow integerRow(const char* name, int least, int greatest) {
    VariableRow row;
    row.name = name;
    row.kind = VariableKind::Integer;
    row.home = VariableHome::Header;
    row.least = least;
    row.greatest = greatest;
    row.get = [](const HeaderVariables& header) -> VariableValue { return std::int32_t{header.*member}; };
    row.set = [](HeaderVariables& header, const VariableValue& value, AcDbDatabase&) {
        header.*member = std::get<std::int32_t>(value);
        return Result::Ok;
    };
    return row;
}

template<double HeaderVariables::*member>
VariableRow realRow(const char* name, double least = -kGreatest, double greatest = kGreatest) {
    VariableRow row;
    row.name = name;
    row.kind = VariableKind::Real;
    row.home = VariableHome::Header;
    row.least = least;
    row.greatest = greatest;
    row.get = [](const HeaderVariables& header) -> VariableValue { return header.*member; };
    row.set = [](HeaderVariables& header, const VariableValue& value, AcDbDatabase&) {
        header.*member = std::get<double>(value);
        return Result::Ok;
    };
    return row;
}

// A variable that names a record of a symbol table.
template<class Record, AcDbObjectId HeaderVariables::*member, AcDbObjectId (AcDbDatabase::*tableId)() const>
VariableRow recordRow(const char* name) {
    VariableRow row;
    row.name = name;
    row.kind = VariableKind::Text;
    row.home = VariableHome::Header;
    row.get = [](const HeaderVariables& header) -> VariableValue {
        const AcDbObjectPointer<Record> record(header.*member, AcDb::kForRead, true);
        return record ? record->getName() : std::string();
    };
    row.set = [](HeaderVariables& header, const VariableValue& value, AcDbDatabase& database) {
        const AcDbObjectPointer<AcDbSymbolTable> table((database.*tableId)());
        AcDbObjectId id;
        if (!table || table->getAt(std::get<std::string>(value), id) != Acad::eOk) return Result::NotFound;
        header.*member = id;
        return Result::Ok;
    };
    return row;
}

template<class Triple, Triple HeaderVariables::*member>
VariableRow readOnlyPointRow(const char* name) {
    VariableRow row;
    row.name = name;
    row.kind = VariableKind::Point3d;
    row.home = VariableHome::Header;
    row.readOnly = true;
    row.get = [](const HeaderVariables& header) -> VariableValue {
        const Triple& p = header.*member;
        return AcGePoint3d(p.x, p.y, p.z);
    };
    return row;
}

std::string colorText(const AcCmColor& color) {
    if (color.isByColor()) {
        const std::uint32_t rgb = color.rgb();
        return fmt::format("RGB:{},{},{}", rgb >> 16, (rgb >> 8) & 0xFF, rgb & 0xFF);
    }
    if (color.isByLayer()) return "BYLAYER";
    if (color.isByBlock()) return "BYBLOCK";
    return std::to_string(color.colorIndex());
}

bool readNumber(std::string_view text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

Result setColor(HeaderVariables& header, const VariableValue& value, AcDbDatabase&) {
    constexpr const char* kNames[] = {"BYBLOCK", "RED",  "YELLOW",  "GREEN",
                                      "CYAN",    "BLUE", "MAGENTA", "WHITE"};
    const std::string text = asciiUpperCase(std::get<std::string>(value));
    if (text == "BYLAYER") {
        header.cecolor = AcCmColor(AcCmColor::kByLayer);
        return Result::Ok;
    }
    int index = static_cast<int>(std::find(std::begin(kNames), std::end(kNames), text) - std::begin(kNames));
    const bool isName = index < static_cast<int>(std::size(kNames));
    if (!isName && (!readNumber(text, index) || index < 0 || index > 256)) return Result::OutOfRange;
    header.cecolor = AcCmColor(static_cast<std::int16_t>(index));
    return Result::Ok;
}

VariableRow colorRow() {
    VariableRow row;
    row.name = "CECOLOR";
    row.kind = VariableKind::Text;
    row.home = VariableHome::Header;
    row.get = [](const HeaderVariables& header) -> VariableValue { return colorText(header.cecolor); };
    row.set = setColor;
    return row;
}

VariableRow lineWeightRow() {
    VariableRow row;
    row.name = "CELWEIGHT";
    row.kind = VariableKind::Integer;
    row.home = VariableHome::Header;
    row.get = [](const HeaderVariables& header) -> VariableValue { return std::int32_t{header.celweight}; };
    row.set = [](HeaderVariables& header, const VariableValue& value, AcDbDatabase&) {
        constexpr int kWeights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                    50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
        const std::int32_t weight = std::get<std::int32_t>(value);
        if (std::find(std::begin(kWeights), std::end(kWeights), weight) == std::end(kWeights))
            return Result::OutOfRange;
        header.celweight = static_cast<AcDb::LineWeight>(weight);
        return Result::Ok;
    };
    return row;
}

VariableRow worldUcsRow() {
    VariableRow row;
    row.name = "WORLDUCS";
    row.home = VariableHome::Header;
    row.readOnly = true;
    row.get = [](const HeaderVariables& header) -> VariableValue {
        const bool isWorld = header.ucsOrigin.isEqualTo(AcGePoint3d::kOrigin) &&
                             header.ucsXDir.isEqualTo(AcGeVector3d::kXAxis) &&
                             header.ucsYDir.isEqualTo(AcGeVector3d::kYAxis);
        return std::int32_t{isWorld ? 1 : 0};
    };
    return row;
}

} // namespace

void addHeaderVariables(std::vector<VariableRow>& rows) {
    using H = HeaderVariables;
    using D = AcDbDatabase;
    rows.insert(rows.end(),
                {
                    recordRow<AcDbLayerTableRecord, &H::clayer, &D::layerTableId>("CLAYER"),
                    recordRow<AcDbLinetypeTableRecord, &H::celtype, &D::linetypeTableId>("CELTYPE"),
                    recordRow<AcDbTextStyleTableRecord, &H::textstyle, &D::textStyleTableId>("TEXTSTYLE"),
                    colorRow(),
                    lineWeightRow(),
                    worldUcsRow(),
                    realRow<&H::celtscale>("CELTSCALE", kLeastPositive),
                    realRow<&H::ltscale>("LTSCALE", kLeastPositive),
                    realRow<&H::textsize>("TEXTSIZE", kLeastPositive),
                    realRow<&H::elevation>("ELEVATION"),
                    realRow<&H::angbase>("ANGBASE"),
                    realRow<&H::pdsize>("PDSIZE"),
                    integerRow<&H::lunits>("LUNITS", 1, 5),
                    integerRow<&H::luprec>("LUPREC", 0, 8),
                    integerRow<&H::aunits>("AUNITS", 0, 4),
                    integerRow<&H::auprec>("AUPREC", 0, 8),
                    integerRow<&H::angdir>("ANGDIR", 0, 1),
                    integerRow<&H::insunits>("INSUNITS", 0, 20),
                    integerRow<&H::measurement>("MEASUREMENT", 0, 1),
                    integerRow<&H::orthomode>("ORTHOMODE", 0, 1),
                    integerRow<&H::mirrtext>("MIRRTEXT", 0, 1),
                    integerRow<&H::attreq>("ATTREQ", 0, 1),
                    integerRow<&H::pdmode>("PDMODE", 0, 100),
                    integerRow<&H::fillmode>("FILLMODE", 0, 1),
                    readOnlyPointRow<AcGePoint3d, &H::ucsOrigin>("UCSORG"),
                    readOnlyPointRow<AcGeVector3d, &H::ucsXDir>("UCSXDIR"),
                    readOnlyPointRow<AcGeVector3d, &H::ucsYDir>("UCSYDIR"),
                });
}

} // namespace veldrin
