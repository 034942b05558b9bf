#include "drawing/AcDbLayerTable.h"
#include "drawing/UndoLog.h"
#include "editor/SystemVariables.h"
#include "editor/aced.h"
#include "platform/editor/HostTest.h"

#include <numbers>

using veldrin::SystemVariables;
using veldrin::VariableValue;
using Result = SystemVariables::Result;

namespace {

class VariablesTest : public HostTest {
protected:
    VariablesTest() { documents().newDocument(); }

    SystemVariables& variables() { return host->variables(); }

    static void addLayer(AcDbDatabase& database, const char* name) {
        AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
        auto* record = new AcDbLayerTableRecord;
        ASSERT_EQ(record->setName(name), Acad::eOk);
        ASSERT_EQ(table->add(record), Acad::eOk);
        record->close();
    }
};

TEST_F(VariablesTest, refusalsSayWhatIsWrongAndChangeNothing) {
    const std::tuple<const char*, VariableValue, Result> cases[] = {
        {"NOSUCH", 1, Result::Unknown},
        {"dwgname", std::string("x"), Result::ReadOnly},
        {"LUPREC", std::string("4"), Result::WrongType},
        {"LUPREC", 2.5, Result::WrongType},
        {"LUPREC", 9, Result::OutOfRange},
        {"LTSCALE", 0.0, Result::OutOfRange},
        {"LTSCALE", std::numeric_limits<double>::infinity(), Result::WrongType},
        {"CELWEIGHT", 26, Result::OutOfRange},
        {"CECOLOR", std::string("300"), Result::OutOfRange},
        {"CLAYER", std::string("none"), Result::NotFound},
        {"LASTPOINT", 1.0, Result::WrongType},
        {"UCSORG", AcGePoint3d(), Result::ReadOnly},
    };
    for (const auto& [name, value, result] : cases) {
        const auto before = variables().getLisp(name);
        EXPECT_EQ(variables().set(name, value), result) << name;
        EXPECT_TRUE(veldrin::lisp::isEqual(variables().getLisp(name), before)) << name;
        EXPECT_NE(veldrin::describeRefusal(name, value, result).find(" rejected: "), std::string::npos);
    }
    EXPECT_TRUE(variables().getLisp("NOSUCH").isNil());
}

TEST_F(VariablesTest, valuesAreConvertedWhereNothingIsLost) {
    EXPECT_EQ(variables().set("ltscale", 2), Result::Ok);
    EXPECT_EQ(variables().real("LTSCALE"), 2.0);
    EXPECT_EQ(variables().set("Luprec", 3.0), Result::Ok);
    EXPECT_EQ(variables().integer("LUPREC"), 3);
    EXPECT_EQ(variables().set("LASTPOINT", AcGePoint2d(1, 2)), Result::Ok);
    EXPECT_EQ(veldrin::lisp::prin1Text(variables().getLisp("lastpoint")), "(1.0 2.0 0.0)");
    EXPECT_EQ(variables().set("CECOLOR", std::string("red")), Result::Ok);
    EXPECT_EQ(variables().text("CECOLOR"), "1");
    EXPECT_EQ(variables().set("CECOLOR", std::string("ByLayer")), Result::Ok);
    EXPECT_EQ(variables().text("CECOLOR"), "BYLAYER");
}

TEST_F(VariablesTest, aDrawingsVariablesGoWithTheDrawing) {
    AcDbDatabase& first = *documents().current()->database();
    addLayer(first, "Water");
    EXPECT_EQ(variables().set("CLAYER", std::string("WATER")), Result::Ok);
    EXPECT_EQ(variables().text("CLAYER"), "Water");
    EXPECT_EQ(variables().set("USERS1", std::string("mine")), Result::Ok);
    EXPECT_EQ(variables().set("OSMODE", 35), Result::Ok);

    auto* second = documents().newDocument();
    EXPECT_EQ(variables().text("CLAYER"), "0");
    EXPECT_EQ(variables().text("USERS1"), "");
    EXPECT_EQ(variables().integer("OSMODE"), 35);
    EXPECT_EQ(variables().text("DWGNAME"), "Drawing2.vqd");
    EXPECT_EQ(variables().integer("DWGTITLED"), 0);

    EXPECT_TRUE(documents().closeDocument(second));
    EXPECT_EQ(variables().text("CLAYER"), "Water");
    EXPECT_TRUE(documents().closeDocument(documents().current()));
    EXPECT_FALSE(variables().get("CLAYER"));
    EXPECT_EQ(variables().set("CLAYER", std::string("0")), Result::Unknown);
    EXPECT_EQ(variables().integer("CMDECHO"), 1);
}

TEST_F(VariablesTest, aChangeOfAHeaderVariableCanBeTakenBack) {
    AcDbDatabase& database = *documents().current()->database();
    const std::size_t steps = database.undoLog().steps().size();
    {
        const veldrin::UndoStep step("SETVAR");
        EXPECT_EQ(variables().set("LTSCALE", 3.0), Result::Ok);
    }
    ASSERT_EQ(database.undoLog().steps().size(), steps + 1);
    EXPECT_EQ(database.undoLog().steps().back().entries.at(0).kind, veldrin::UndoLog::Kind::kHeader);
}

TEST_F(VariablesTest, whatIsComputedFollowsTheHost) {
    documents().newDocument(folder.file("plan"));
    EXPECT_EQ(variables().text("DWGPREFIX"), folder.path().string() + "/");
    EXPECT_EQ(variables().text("DWGNAME"), "plan.vqd");
    EXPECT_EQ(variables().text("SAVENAME"), folder.file("plan.vqd"));

    EXPECT_EQ(variables().integer("CMDACTIVE"), 0);
    {
        const veldrin::ActivityScope line(veldrin::ActivityStack::Kind::Command, "LINE");
        const veldrin::ActivityScope zoom(veldrin::ActivityStack::Kind::Command, "ZOOM");
        EXPECT_EQ(variables().integer("CMDACTIVE"), 3);
        EXPECT_EQ(variables().text("CMDNAMES"), "LINE'ZOOM");
    }
    // 2000-01-01 is Julian day 2451545; both clocks tell of the same day.
    const double julian = variables().real("DATE");
    const double calendar = variables().real("CDATE");
    EXPECT_GT(julian, 2451545.0);
    const auto year = static_cast<int>(calendar / 10000.0);
    EXPECT_NEAR((julian - 2451545.0) / 365.2425 + 2000.0, year + 0.5, 0.51);
    EXPECT_EQ(veldrin::lisp::prin1Text(variables().getLisp("EXTMIN")), "(1.0e+20 1.0e+20 1.0e+20)");
}

TEST_F(VariablesTest, modulesGetThemAsBuffers) {
    resbuf buffer{};
    EXPECT_EQ(acedGetVar("nosuch", &buffer), RTERROR);
    ASSERT_EQ(acedGetVar("savefile", &buffer), RTNORM);
    EXPECT_EQ(buffer.restype, RTSTR);
    EXPECT_STREQ(buffer.resval.rstring, "");
    acdbFree(buffer.resval.rstring);
    ASSERT_EQ(acedGetVar("luprec", &buffer), RTNORM);
    EXPECT_EQ(buffer.restype, RTSHORT);
    buffer.resval.rint = 6;
    EXPECT_EQ(acedSetVar("LUPREC", &buffer), RTNORM);
    EXPECT_EQ(variables().integer("LUPREC"), 6);
    buffer.restype = RTNIL;
    EXPECT_EQ(acedSetVar("LUPREC", &buffer), RTERROR);
}

TEST_F(VariablesTest, pointsGoBetweenTheWorldAndTheUsersSystem) {
    AcDbDatabase& database = *documents().current()->database();
    veldrin::HeaderVariables header = database.header();
    header.ucsOrigin.set(10, 0, 0);
    header.ucsXDir = AcGeVector3d::kYAxis;
    header.ucsYDir = -AcGeVector3d::kXAxis;
    database.setHeader(header);
    EXPECT_EQ(variables().integer("WORLDUCS"), 0);

    resbuf world{}, user{};
    world.restype = user.restype = RTSHORT;
    user.resval.rint = 1;
    const ads_point point{3.0, 4.0, 5.0};
    ads_point moved, back, direction;
    ASSERT_EQ(acedTrans(point, &user, &world, 0, moved), RTNORM);
    EXPECT_NEAR(moved[0], 6.0, 1e-12);
    EXPECT_NEAR(moved[1], 3.0, 1e-12);
    ASSERT_EQ(acedTrans(moved, &world, &user, 0, back), RTNORM);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(back[i], point[i], 1e-12);
    ASSERT_EQ(acedTrans(point, &user, &world, 1, direction), RTNORM);
    EXPECT_NEAR(direction[0], -4.0, 1e-12);
    user.resval.rint = 9;
    EXPECT_EQ(acedTrans(point, &user, &world, 0, moved), RTERROR);
}

} // namespace
