#pragma once

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLine.h"
#include "drawing/DatabaseRegistry.h"
#include "drawing/UndoLog.h"
#include "runtime/AcRxClass.h"
#include "runtime/Host.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace veldrin::tests {

// A host with one empty drawing.
class Drawing : public ::testing::Test {
protected:
    static AcDbObjectId append(AcDbDatabase& into, AcDbEntity* entity) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(into.modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        return id;
    }
    static AcDbObjectId addLine(AcDbDatabase& into, double length) {
        return append(into, new AcDbLine({0.0, 0.0, 0.0}, {length, 0.0, 0.0}));
    }
    AcDbObjectId addLine(double length = 1.0) { return addLine(db, length); }

    static AcDbObjectId addLayer(AcDbDatabase& into, const std::string& name, std::int16_t color = 7) {
        AcDbObjectPointer<AcDbLayerTable> table(into.layerTableId(), AcDb::kForWrite);
        auto* layer = new AcDbLayerTableRecord;
        layer->setName(name);
        layer->setColor(AcCmColor(color));
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, layer), Acad::eOk);
        layer->close();
        return id;
    }
    AcDbObjectId addLayer(const std::string& name, std::int16_t color = 7) {
        return addLayer(db, name, color);
    }

    static double lengthOf(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForRead, true);
        return line ? line->endPoint().x : -1.0;
    }
    static void setLength(AcDbObjectId id, double length) {
        AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
        ASSERT_EQ(line.openStatus(), Acad::eOk);
        line->setEndPoint({length, 0.0, 0.0});
    }
    static void setErased(AcDbObjectId id, bool erased = true) {
        AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true);
        ASSERT_EQ(object.openStatus(), Acad::eOk);
        ASSERT_EQ(object->erase(erased), Acad::eOk);
    }
    // A line's record in the log's last step; null without one.
    const UndoLog::Entry* lastEntry(UndoLog::Kind kind) {
        const UndoLog::Entry* found = nullptr;
        if (db.undoLog().steps().empty()) return nullptr;
        for (const auto& entry : db.undoLog().steps().back().entries) {
            if (entry.kind == kind) found = &entry;
        }
        return found;
    }

    Host host;
    AcDbDatabase db;
};

} // namespace veldrin::tests
