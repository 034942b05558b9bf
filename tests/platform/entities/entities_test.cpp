#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/DxfListFiler.h"
#include "platform/entities/EntityTest.h"

using namespace veldrin;
using namespace veldrin::testing;

namespace {

class Entities : public EntityTest {
protected:
    AcDbObjectId addLayer(const char* name) {
        const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), Acad::eOk);
        record.release()->close();
        return id;
    }

    // The groups of an entity as "code=value" words, points by their coordinates.
    std::string groups(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        DxfListWriter writer(&database);
        EXPECT_EQ(entity->dxfOut(&writer), Acad::eOk);
        const ResbufPtr chain = writer.take();
        std::string text;
        for (const resbuf* item = chain.get(); item; item = item->rbnext)
            text += word(dxfItemOf(*item)) + " ";
        return text;
    }

    static std::string word(const AcDbDxfItem& item) {
        char buffer[120];
        if (item.kind == AcDbDxfItem::kText) return std::to_string(item.code) + "=" + item.text;
        if (item.kind == AcDbDxfItem::kPoint)
            std::snprintf(buffer, sizeof buffer, "%d=%g,%g,%g", item.code, item.point.x, item.point.y,
                          item.point.z);
        else if (item.kind == AcDbDxfItem::kReal)
            std::snprintf(buffer, sizeof buffer, "%d=%g", item.code, item.real);
        else
            std::snprintf(buffer, sizeof buffer, "%d=%ld", item.code, static_cast<long>(item.integer));
        return buffer;
    }

    Acad::ErrorStatus read(AcDbEntity& entity, const ResbufPtr& chain) {
        DxfListReader reader(&database, chain.get(), true);
        return entity.dxfIn(&reader);
    }
};

} // namespace

// What nobody set is taken from the drawing when the entity is added; what somebody set stays.
TEST_F(Entities, TakeTheDrawingsCurrentProperties) {
    HeaderVariables header = database.header();
    header.clayer = addLayer("WATER");
    header.cecolor = AcCmColor(3);
    header.celweight = 50;
    header.celtscale = 2.0;
    database.setHeader(header);
    const AcDbObjectId other = addLayer("OTHER");

    const AcDbObjectPointer<AcDbLine> plain(add(std::make_unique<AcDbLine>()));
    EXPECT_EQ(plain->layer(), "WATER");
    EXPECT_EQ(plain->linetype(), "ByLayer");
    EXPECT_EQ(plain->colorIndex(), 3);
    EXPECT_EQ(plain->lineWeight(), 50);
    EXPECT_EQ(plain->linetypeScale(), 2.0);

    auto own = std::make_unique<AcDbLine>();
    own->setLayer(other);
    own->setColorIndex(AcCmColor::kByLayer);
    const AcDbObjectPointer<AcDbLine> set(add(std::move(own)));
    EXPECT_EQ(set->layer(), "OTHER");
    EXPECT_EQ(set->colorIndex(), AcCmColor::kByLayer);
}

TEST_F(Entities, RefuseWhatTheyCannotCarry) {
    AcDbLine line;
    EXPECT_EQ(line.setLayer("NOWHERE"), Acad::eKeyNotFound);
    EXPECT_EQ(line.setLayer(AcDbObjectId()), Acad::eNullObjectId);
    EXPECT_EQ(line.setLayer(database.continuousLinetype()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(line.setColorIndex(257), Acad::eInvalidInput);
    EXPECT_EQ(line.setLinetypeScale(0.0), Acad::eInvalidInput);
    EXPECT_TRUE(line.layerId().isNull());

    AcDbDatabase elsewhere;
    const AcDbObjectPointer<AcDbLine> here(add(std::make_unique<AcDbLine>()), AcDb::kForWrite);
    EXPECT_EQ(here->setLayer(elsewhere.layerZero()), Acad::eWrongDatabase);
    EXPECT_EQ(here->layer(), "0");
}

// Order and omissions are what scripts look for.
TEST_F(Entities, GroupsStandInTheDialectsOrder) {
    const AcDbObjectId plain = add(std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6)));
    EXPECT_EQ(groups(plain), "100=AcDbEntity 67=0 410=Model 8=0 100=AcDbLine 10=1,2,3 11=4,5,6 210=0,0,1 ");

    auto arc = std::make_unique<AcDbArc>(AcGePoint3d(1, 2, 0), 5.0, 0.5, 1.5);
    AcCmColor orange;
    orange.setRGB(0xFF8000, 30);
    arc->setColor(orange);
    arc->setLinetype(database.continuousLinetype());
    arc->setLinetypeScale(0.5);
    arc->setVisibility(AcDb::kInvisible);
    arc->setLineWeight(35);
    EXPECT_EQ(groups(add(std::move(arc))),
              "100=AcDbEntity 67=0 410=Model 8=0 6=Continuous 62=30 420=16744448 48=0.5 60=1 370=35 "
              "100=AcDbCircle 10=1,2,0 40=5 210=0,0,1 100=AcDbArc 50=0.5 51=1.5 ");
    const AcGePoint3dArray corners{{0, 0, 2}, {5, 0, 2}, {5, 5, 2}};
    EXPECT_EQ(groups(add(std::make_unique<AcDb2dPolyline>(AcDb::k2dFitCurvePoly, corners, 0.0, true))),
              "100=AcDbEntity 67=0 410=Model 8=0 100=AcDb2dPolyline 66=1 10=0,0,2 70=3 40=0 41=0 210=0,0,1 ");
}

TEST_F(Entities, ReadListsAsPeopleTypeThem) {
    // No markers, any order, a whole number for a real, a layer that is not there yet.
    ResbufBuilder builder;
    builder.addText(0, "CIRCLE");
    builder.addPoint(10, 7, 8, 9);
    builder.add(62).resval.rint = 1;
    builder.add(40).resval.rreal = 2.5;
    builder.addText(8, "Typed");
    AcDbCircle circle;
    ASSERT_EQ(read(circle, builder.take()), Acad::eOk);
    expectPoint(circle.center(), {7, 8, 9});
    EXPECT_EQ(circle.radius(), 2.5);
    EXPECT_EQ(circle.colorIndex(), 1);
    EXPECT_EQ(circle.layer(), "Typed");

    ResbufBuilder bad;
    bad.addText(0, "CIRCLE");
    bad.addText(6, "NO-SUCH-LINETYPE");
    AcDbCircle untouched;
    EXPECT_EQ(read(untouched, bad.take()), Acad::eKeyNotFound);
    ResbufBuilder flat;
    flat.addPoint(10, 1, 1, 1);
    AcDbCircle noRadius;
    EXPECT_EQ(read(noRadius, flat.take()), Acad::eDegenerateGeometry);
}

// Changing one group of a list and giving it back changes that and nothing else, for every class.
TEST_F(Entities, GroupsReadBackGiveTheSameEntity) {
    std::vector<AcDbObjectId> ids;
    ids.push_back(add(std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6))));
    ids.push_back(
        add(std::make_unique<AcDbArc>(AcGePoint3d(1, 2, 3), AcGeVector3d(0, 1, 1).normal(), 5.0, 0.5, 1.5)));
    ids.push_back(add(std::make_unique<AcDbCircle>(AcGePoint3d(1, 2, 3), AcGeVector3d(1, 0, 0), 5.0)));
    auto text = std::make_unique<AcDbMText>();
    text->setLocation({3, 4, 5});
    text->setRotation(0.25);
    text->setContents(std::string(600, 'x') + "\\Pend");
    text->setTextHeight(3.0);
    text->setAttachment(AcDbMText::kMiddleRight);
    ids.push_back(add(std::move(text)));
    for (const AcDbObjectId id : ids) {
        const std::string before = groups(id);
        DxfListWriter writer(&database);
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        ASSERT_EQ(entity->dxfOut(&writer), Acad::eOk);
        ASSERT_EQ(read(*entity, writer.take()), Acad::eOk);
        entity->downgradeOpen();
        EXPECT_EQ(groups(id), before);
    }
}

TEST_F(Entities, ClonesAreTheSameByTheirGroups) {
    auto trap = std::make_unique<AcDb2dPolyline>(AcDb::k2dFitCurvePoly, trapPoints(5.0));
    trap->setColorIndex(4);
    AcDbSpline* spline = nullptr;
    trap->getSpline(spline);
    auto text = std::make_unique<AcDbMText>();
    text->setContents("1/2\" CW");
    text->setDirection({0, 1, 0});
    for (const AcDbObjectId id :
         {add(std::move(trap)), add(std::unique_ptr<AcDbSpline>(spline)), add(std::move(text)),
          add(std::make_unique<AcDbArc>(AcGePoint3d(1, 2, 3), 5.0, 0.5, 1.5)),
          add(std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6)))}) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(entity->clone()));
        ASSERT_TRUE(copy);
        AcDbExtents a, b;
        entity->getGeomExtents(a);
        copy->getGeomExtents(b);
        expectPoint(a.minPoint(), b.minPoint());
        expectPoint(a.maxPoint(), b.maxPoint());
        const std::string original = groups(id);
        EXPECT_EQ(groups(add(std::move(copy))), original);
    }
}
