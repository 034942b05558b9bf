#include "module/ModuleTest.h"

#include "drawing/AcDbArc.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "host/acrxEntryPoint.h"
#include "lisp/Engine.h"
#include "lisp/Printer.h"
#include "scripting/Scripting.h"
#include "util/DrawingHelpers.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

OwnFolder::OwnFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "veldrin-module-XXXXXX").string();
    m_path = mkdtemp(name.data());
    setenv("XDG_CONFIG_HOME", m_path.c_str(), 1);
}

OwnFolder::~OwnFolder() {
    std::filesystem::remove_all(m_path);
}

std::string OwnFolder::touch(const std::string& name) const {
    const std::filesystem::path path = file(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "";
    return path.string();
}

std::string OwnFolder::makeFolder(const std::string& name) const {
    std::filesystem::create_directories(file(name));
    return file(name);
}

ModuleTest::ModuleTest() : host(std::make_unique<veldrin::Host>()) {
    host->commandLine().setSink([this](std::string_view text) { printed += text; });
    veldrin::scripting::install(*host);
    host->documents().newDocument();
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), AcRx::kRetOK);
    EXPECT_EQ(acrxEntryPoint(AcRx::kLoadDwgMsg, nullptr), AcRx::kRetOK);
    takePrinted();
}

ModuleTest::~ModuleTest() {
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetOK);
}

std::string ModuleTest::lisp(const std::string& code) {
    using Status = veldrin::lisp::Outcome::Status;
    const veldrin::lisp::Outcome outcome = host->lisp().runText(code);
    if (outcome.status == Status::Done) return veldrin::lisp::prin1Text(outcome.value);
    return outcome.error ? "error: " + outcome.error->message : "error";
}

AcDbObjectId ModuleTest::addLayer(const std::string& name, const char* linetype) {
    AcDbDatabase* database = plumb::CurrentDatabase();
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(database->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbLayerTableRecord;
    EXPECT_EQ(record->setName(name), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, record), Acad::eOk);
    if (linetype) {
        AcDbLinetypeTable* linetypes = nullptr;
        EXPECT_EQ(database->getLinetypeTable(linetypes, AcDb::kForWrite), Acad::eOk);
        auto* pattern = new AcDbLinetypeTableRecord;
        EXPECT_EQ(pattern->setName(linetype), Acad::eOk);
        AcDbObjectId patternId;
        EXPECT_EQ(linetypes->add(patternId, pattern), Acad::eOk);
        record->setLinetypeObjectId(patternId);
        pattern->close();
        linetypes->close();
    }
    record->close();
    table->close();
    return id;
}

std::string numberText(double value) {
    char buffer[340];
    std::snprintf(buffer, sizeof buffer, "%.6f", value);
    std::string text = buffer;
    if (text.find('.') == std::string::npos) return text; // no number
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string pointText(const AcGePoint3d& p) {
    return numberText(p.x) + "," + numberText(p.y) + "," + numberText(p.z);
}

namespace {

std::string layerName(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    return layer ? layer->getName() : "?";
}

std::string lineOf(const veldrin::DisplayList& list, std::size_t i) {
    using Kind = veldrin::PrimitiveKind;
    std::string text;
    switch (list.kind(i)) {
    case Kind::kPolyline:
    case Kind::kPolygon:
        text = "line";
        for (const AcGePoint3d& p : list.points(i)) text += " " + pointText(p);
        return text;
    case Kind::kFittedCurve:
        text = "curve";
        for (const AcGePoint3d& p : list.points(i)) text += " " + pointText(p);
        return text;
    case Kind::kCircle: {
        const auto circle = list.circle(i);
        return "circle " + pointText(circle.center) + " " + numberText(circle.radius);
    }
    case Kind::kArc: {
        const auto arc = list.arc(i);
        return "arc " + pointText(arc.startPoint()) + " " + pointText(arc.center) + " " +
               numberText(arc.radius) + " " + numberText(arc.sweep) + " " + numberText(arc.normal.z);
    }
    case Kind::kText: {
        const AcGiText& t = list.text(i);
        return "text " + pointText(t.location) + " " + numberText(t.direction.convert2d().angle()) + " " +
               t.contents;
    }
    }
    return "?";
}

Lines linesOf(const veldrin::DisplayList& list, AcDbObjectId ownLayer) {
    Lines lines;
    for (std::size_t i = 0; i < list.size(); ++i) {
        std::string line = lineOf(list, i);
        const AcDbObjectId layer = list.traits(i).layer;
        if (layer != ownLayer) line += " @" + layerName(layer);
        lines.push_back(line);
    }
    return lines;
}

} // namespace

Lines pictureOf(AcDbEntity& entity) {
    veldrin::DisplayList list;
    veldrin::Recorder recorder(list);
    veldrin::drawEntity(entity, recorder);
    return linesOf(list, entity.layerId());
}

Lines pictureOfList(const plumb::PlumbPipe& pipe) {
    CList<AcDbEntity*> pieces;
    pipe.buildEntityList(&pieces);
    veldrin::DisplayList list;
    for (AcDbEntity* piece : pieces) {
        veldrin::Recorder recorder(list);
        const AcDbObjectPointer<AcDbEntity> open(piece->objectId());
        EXPECT_TRUE(open) << "a listed entity must be closed and in the drawing";
        veldrin::drawEntity(*piece, recorder);
    }
    return linesOf(list, pipe.layerId());
}
