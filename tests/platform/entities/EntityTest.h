#pragma once

#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDbArc.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLine.h"
#include "drawing/AcDbMText.h"
#include "drawing/AcDbSpline.h"
#include "runtime/Host.h"

#include <gtest/gtest.h>
#include <memory>
#include <numbers>

namespace veldrin::testing {

inline constexpr double kPi = std::numbers::pi;

// A host with a drawing that is the working one.
class EntityTest : public ::testing::Test {
protected:
    EntityTest() { acdbHostApplicationServices()->setWorkingDatabase(&database); }
    ~EntityTest() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    // Puts an entity into model space and closes it; the drawing owns it then.
    template<class Entity>
    AcDbObjectId add(std::unique_ptr<Entity> entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, entity.get()), Acad::eOk);
        entity.release()->close();
        return id;
    }

    veldrin::Host host;
    AcDbDatabase database;
};

inline void expectPoint(const AcGePoint3d& actual, const AcGePoint3d& expected, double tolerance = 1.0e-9) {
    EXPECT_LE(actual.distanceTo(expected), tolerance)
        << "(" << actual.x << " " << actual.y << " " << actual.z << ") instead of (" << expected.x << " "
        << expected.y << " " << expected.z << ")";
}

inline void expectPoints(const AcGePoint3dArray& actual, const AcGePoint3dArray& expected,
                         double tolerance = 1.0e-9) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) expectPoint(actual[i], expected[i], tolerance);
}

// The six points from which the U under a fixture is drawn.
inline AcGePoint3dArray trapPoints(double z = 0.0) {
    return {{88, -6, z}, {88, -6.01, z}, {93.88, -12, z}, {94.12, -12, z}, {100, -6.01, z}, {100, -6, z}};
}

} // namespace veldrin::testing
