#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDbArc.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbMText.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/AcDbSpline.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/UndoLog.h"
#include "platform/files/DrawingFileTest.h"

#include <limits>
#include <numbers>

namespace veldrin::testing {

namespace {

class DrawingRoundTrip : public DrawingFileTest {
protected:
    template<class Table, class Record>
    static AcDbObjectId addRecord(AcDbObjectId tableId, std::unique_ptr<Record> record) {
        const AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), Acad::eOk);
        record.release()->close();
        return id;
    }

    // One of every kind of table record, with values that are not the defaults.
    static void addTableRecords(AcDbDatabase& database) {
        auto linetype = std::make_unique<AcDbLinetypeTableRecord>();
        linetype->setName("Dashed");
        linetype->setDashes({0.5, -0.25});
        const AcDbObjectId dashed =
            addRecord<AcDbLinetypeTable>(database.linetypeTableId(), std::move(linetype));
        auto layer = std::make_unique<AcDbLayerTableRecord>();
        layer->setName("Rohre_\xC3\xA4");
        layer->setLinetypeObjectId(dashed);
        layer->setIsFrozen(true);
        addRecord<AcDbLayerTable>(database.layerTableId(), std::move(layer));
        auto style = std::make_unique<AcDbTextStyleTableRecord>();
        style->setName("Narrow");
        style->setXScale(0.8);
        addRecord<AcDbTextStyleTable>(database.textStyleTableId(), std::move(style));
        auto application = std::make_unique<AcDbRegAppTableRecord>();
        application->setName("NOTES");
        addRecord<AcDbRegAppTable>(database.regAppTableId(), std::move(application));
        auto block = std::make_unique<AcDbBlockTableRecord>();
        block->setName("Valve");
        block->setOrigin({1, 2, 3});
        const AcDbObjectId valve = addRecord<AcDbBlockTable>(database.blockTableId(), std::move(block));
        const AcDbObjectPointer<AcDbBlockTableRecord> opened(valve, AcDb::kForWrite);
        auto* circle = new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 4.0);
        EXPECT_EQ(opened->appendAcDbEntity(circle), Acad::eOk);
        circle->close();
    }

    static void addEntities(AcDbDatabase& database) {
        const AcGePoint3dArray corners = {{0, 0, 7}, {10, 0, 7}, {10, 5, 7}};
        const AcGeDoubleArray bulges = {0.5, 0.0, -1.0};
        add(database, std::make_unique<AcDbLine>(AcGePoint3d(1.0 / 3.0, 2, 3), AcGePoint3d(4, 5, -6)));
        add(database, std::make_unique<AcDbArc>(AcGePoint3d(1, 1, 0), 2.5, 0.25, std::numbers::pi));
        add(database, std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d::kXAxis, 1.0));
        add(database,
            std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, corners, 7.0, true, 0.0, 0.0, &bulges));
        add(database, std::make_unique<AcDb2dPolyline>(AcDb::k2dFitCurvePoly, corners, 7.0));
        add(database, std::make_unique<AcDbSpline>(corners, bulges, false));
        auto text = std::make_unique<AcDbMText>();
        text->setContents("{\\L3/4\"} \xE2\x8C\x80 copper");
        text->setRotation(0.5);
        add(database, std::move(text));
        auto fancy = std::make_unique<AcDbLine>();
        fancy->setLayer("Rohre_\xC3\xA4");
        fancy->setLinetype("Dashed");
        AcCmColor orange;
        orange.setRGB(0xFF8000, 30);
        fancy->setColor(orange);
        fancy->setVisibility(AcDb::kInvisible);
        add(database, std::move(fancy));
    }

    // Extended data and an extension dictionary with an entry.
    static void addExtras(AcDbDatabase& database) {
        const AcDbObjectPointer<AcDbEntity> line(addLine(database, 3.0), AcDb::kForWrite);
        resbuf* xdata = acutBuildList(1001, "NOTES", 1000, "main shaft", 1070, 3, 0);
        EXPECT_EQ(line->setXData(xdata), Acad::eOk);
        acutRelRb(xdata);
        EXPECT_EQ(line->createExtensionDictionary(), Acad::eOk);
        const AcDbObjectPointer<AcDbDictionary> dictionary(line->extensionDictionary(), AcDb::kForWrite);
        auto* entry = new AcDbXrecord;
        AcDbObjectId id;
        EXPECT_EQ(dictionary->setAt("PIPES", entry, id), Acad::eOk);
        resbuf* chain = acutBuildList(40, 2.5, 1, "text", 0);
        EXPECT_EQ(entry->setFromRbChain(chain), Acad::eOk);
        acutRelRb(chain);
        entry->close();
    }
};

TEST_F(DrawingRoundTrip, everyKindOfObjectComesBackWithTheSameRecord) {
    AcDbDatabase drawing;
    addTableRecords(drawing);
    addEntities(drawing);
    addExtras(drawing);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    EXPECT_EQ(contents(*opened), contents(drawing));
    EXPECT_EQ(opened->getFilename(), path("a.vqd"));
    EXPECT_FALSE(opened->isModified());
    EXPECT_FALSE(drawing.isModified());
    EXPECT_TRUE(opened->undoLog().isRecording());
    EXPECT_TRUE(opened->undoLog().steps().empty());

    // A reader that lost its place in a table or a block shows in what is found by name and in drawing order.
    EXPECT_EQ(opened->modelSpaceId().handle(), drawing.modelSpaceId().handle());
    EXPECT_EQ(opened->layerZero().handle(), drawing.layerZero().handle());
    EXPECT_EQ(opened->continuousLinetype().handle(), drawing.continuousLinetype().handle());
    const AcDbObjectPointer<AcDbLayerTable> layers(opened->layerTableId());
    EXPECT_TRUE(layers->has("rohre_\xC3\xA4"));
    const AcDbObjectPointer<AcDbBlockTableRecord> space(opened->modelSpaceId());
    EXPECT_EQ(space->entityIds().size(), 9U);
    for (const AcDbObjectId id : space->entityIds())
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(id)->ownerId(), opened->modelSpaceId());
}

TEST_F(DrawingRoundTrip, headerVariablesComeBack) {
    AcDbDatabase drawing;
    addTableRecords(drawing);
    HeaderVariables header = drawing.header();
    header.clayer = AcDbObjectAccess::findRecord(drawing.layerTableId(), "Rohre_\xC3\xA4");
    header.celtype = drawing.continuousLinetype();
    header.cecolor.setRGB(0x00FF01, 3);
    header.celweight = 50;
    header.ltscale = 1.0 / 3.0;
    header.elevation = -1.0e-300;
    header.ucsOrigin = {0.1, std::numeric_limits<double>::max(), -2.0 / 3.0};
    header.ucsXDir = {0.0, 1.0, 0.0};
    header.ucsYDir = {-1.0, 0.0, 0.0};
    header.luprec = 8;
    header.angdir = 1;
    drawing.setHeader(header);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    const HeaderVariables& back = opened->header();
    EXPECT_EQ(back.clayer.handle(), header.clayer.handle());
    EXPECT_EQ(back.celtype, opened->continuousLinetype());
    EXPECT_EQ(back.textstyle.handle(), header.textstyle.handle());
    EXPECT_EQ(back.cecolor, header.cecolor);
    EXPECT_EQ(back.celweight, 50);
    EXPECT_EQ(back.ltscale, header.ltscale);
    EXPECT_EQ(back.elevation, header.elevation);
    EXPECT_EQ(back.ucsOrigin.x, header.ucsOrigin.x);
    EXPECT_EQ(back.ucsOrigin.y, header.ucsOrigin.y);
    EXPECT_EQ(back.ucsOrigin.z, header.ucsOrigin.z);
    EXPECT_EQ(back.ucsXDir.y, 1.0);
    EXPECT_EQ(back.ucsYDir.x, -1.0);
    EXPECT_EQ(back.luprec, 8);
    EXPECT_EQ(back.angdir, 1);
}

TEST_F(DrawingRoundTrip, handlesAreNeverUsedAgain) {
    AcDbDatabase drawing;
    addLine(drawing, 1.0);
    const AcDbObjectId last = addLine(drawing, 2.0);
    AcDbObjectPointer<AcDbEntity>(last, AcDb::kForWrite)->erase();
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened->handseed(), drawing.handseed());
    EXPECT_GT(addLine(*opened, 3.0).handle(), last.handle());
}

TEST_F(DrawingRoundTrip, whatPointsToAnErasedLayerStillOpens) {
    AcDbDatabase drawing;
    auto record = std::make_unique<AcDbLayerTableRecord>();
    record->setName("Gone");
    const AcDbObjectId layer = addRecord<AcDbLayerTable>(drawing.layerTableId(), std::move(record));
    auto line = std::make_unique<AcDbLine>();
    line->setLayer(layer);
    const AcDbObjectId id = add(drawing, std::move(line));
    AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->erase();
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    AcDbObjectId found;
    ASSERT_EQ(opened->getAcDbObjectId(found, id.handle()), Acad::eOk);
    EXPECT_TRUE(AcDbObjectPointer<AcDbEntity>(found)->layerId().isNull());
}

} // namespace

} // namespace veldrin::testing
