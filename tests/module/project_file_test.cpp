#include "database/ProjectFile.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbRegAppTable.h"
#include "module/ModuleTest.h"
#include "util/DrawingHelpers.h"

using namespace plumb;

class ProjectFile : public ModuleTest {
protected:
    std::string found(std::initializer_list<const char*> names) {
        const std::string sub = "p" + std::to_string(++m_count);
        for (const char* name : names) folder.touch(sub + "/" + name);
        folder.makeFolder(sub);
        const std::string path = FindDatabaseFile(folder.file(sub), "vq_plumb");
        return path.substr(path.find_last_of('/') + 1);
    }

private:
    int m_count = 0;
};

TEST_F(ProjectFile, IsTheOneThatCounts) {
    EXPECT_EQ(found({}), "");
    EXPECT_EQ(found({"Project vq_plumb.vq", "52-VQ vq_plumb.vq"}), "Project vq_plumb.vq");
    EXPECT_EQ(found({"A VQ_Plumb 2.VQ", "plan.vqd", "vq_elec.vq"}), "A VQ_Plumb 2.VQ");
    EXPECT_EQ(found({"X vq_plumb_MASTER.vq", "x_Master_vq_plumb.vq", "vq_plumb_standards.vq"}), "");
    EXPECT_EQ(found({"a vq_plumb.vq", "b vq_plumb.vq"}), "") << "two are none";
    EXPECT_EQ(found({"a vq_plumb.vq", "b vq_plumb.vq", "old vq_plumb.mdb"}), "old vq_plumb.mdb");
    EXPECT_EQ(FindDatabaseFile(folder.file("no such folder"), "vq_plumb"), "");
}

TEST_F(ProjectFile, TheMarkIsTheTextBehindItsKey) {
    AcDbDatabase* database = CurrentDatabase();
    AcDbRegAppTable* applications = nullptr;
    ASSERT_EQ(database->getRegAppTable(applications, AcDb::kForWrite), Acad::eOk);
    auto* application = new AcDbRegAppTableRecord;
    application->setName("VELDRIN");
    ASSERT_EQ(applications->add(application), Acad::eOk);
    application->close();
    applications->close();

    const AcDbObjectPointer<AcDbBlockTableRecord> space(database->modelSpaceId(), AcDb::kForWrite);
    const auto markWith = [&](std::initializer_list<const char*> texts) {
        resbuf* chain = acutBuildList(1001, "VELDRIN", 0);
        resbuf* tail = chain;
        for (const char* text : texts) {
            tail->rbnext = acutBuildList(1000, text, 0);
            tail = tail->rbnext;
        }
        EXPECT_EQ(space->setXData(chain), Acad::eOk);
        acutRelRb(chain);
        return GetDocumentMark(*space, "VQ_PLUMB");
    };
    EXPECT_EQ(GetDocumentMark(*space, "VQ_PLUMB"), "");
    EXPECT_EQ(markWith({"VQ_ELEC", "NO", "VQ_PLUMB", "YES"}), "YES");
    EXPECT_EQ(markWith({"VQ_ELEC", "VQ_PLUMB", "YES", "x"}), "")
        << "a value that looks like the key is a value";
    EXPECT_EQ(markWith({"VQ_PLUMB"}), "");
}
