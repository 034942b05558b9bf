#pragma once

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLine.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/SlotTable.h"
#include "files/DrawingFile.h"
#include "files/SqlFile.h"
#include "runtime/AcRxClass.h"
#include "runtime/Host.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace veldrin::testing {

// An ordinary user for the time of its life: the superuser may write everywhere.
class OrdinaryUser {
public:
    OrdinaryUser() {
        m_result = getuid() == 0 ? seteuid(kNobody) : 0;
        EXPECT_EQ(m_result, 0);
    }
    ~OrdinaryUser() {
        m_result = getuid() == 0 ? seteuid(0) : 0;
        EXPECT_EQ(m_result, 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    int m_result = 0;
};

// A host, and an empty folder for drawings.
class DrawingFileTest : public ::testing::Test {
protected:
    DrawingFileTest() {
        std::string name = (std::filesystem::temp_directory_path() / "veldrin-files-XXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~DrawingFileTest() override { std::filesystem::remove_all(folder); }

    std::string path(const std::string& name) const { return (folder / name).string(); }

    // Puts an entity into model space and closes it.
    template<class Entity>
    static AcDbObjectId add(AcDbDatabase& database, std::unique_ptr<Entity> entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, entity.get()), Acad::eOk);
        entity.release()->close();
        return id;
    }
    static AcDbObjectId addLine(AcDbDatabase& database, double length) {
        return add(database, std::make_unique<AcDbLine>(AcGePoint3d(), AcGePoint3d(length, 0, 0)));
    }

    // All that a drawing holds, by handle: class and record, which names the owner.
    static std::map<std::string, std::string> contents(const AcDbDatabase& database) {
        std::map<std::string, std::string> all;
        const SlotTable& slots = database.slots();
        for (std::uint32_t number = 1; number < slots.size(); ++number) {
            if (slots[number].erased) continue;
            const AcDbObject& object = *slots[number].object;
            std::string record;
            EXPECT_EQ(AcDbObjectAccess::record(object, AcDb::kFileFiler, record), Acad::eOk);
            all[object.handle().text()] = object.isA()->name() + " " + record;
        }
        return all;
    }

    static std::unique_ptr<AcDbDatabase> open(const std::string& file) {
        auto result = openDrawing(file);
        if (auto* database = std::get_if<std::unique_ptr<AcDbDatabase>>(&result)) return std::move(*database);
        ADD_FAILURE() << std::get<std::string>(result);
        return nullptr;
    }
    // The line about what is wrong with the file.
    static std::string whyNot(const std::string& file) {
        const auto result = openDrawing(file);
        return result.index() == 1 ? std::get<std::string>(result) : "it was opened";
    }
    static std::string save(AcDbDatabase& database, const std::string& file) {
        return saveDrawing(database, file).value_or("");
    }

    // Changes a drawing file behind the back of those who use it.
    static void edit(const std::string& file, const std::string& statement) {
        SqlFile sql(file, SqlFile::Mode::kExisting);
        EXPECT_TRUE(sql.run(statement.c_str())) << sql.error();
    }
    static std::int64_t ask(const std::string& file, const std::string& query) {
        SqlFile sql(file, SqlFile::Mode::kExisting);
        const std::int64_t number = sql.number(query.c_str());
        EXPECT_TRUE(sql.ok()) << sql.error();
        return number;
    }
    static std::string handleNumber(AcDbObjectId id) { return std::to_string(id.handle().value()); }

    Host host;
    std::filesystem::path folder;
};

} // namespace veldrin::testing
