#include "system/UserSettings.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;
using veldrin::UserSettings;

namespace {

constexpr const char* kKey = "Software\\Veldrin Software\\Plumbing";

class SettingsTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "veldrin-settings-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        file = folder / "deep" / "settings";
    }
    void TearDown() override { fs::remove_all(folder); }

    fs::path folder, file;
};

TEST_F(SettingsTest, valuesNeedTheirKeyAndLiveOn) {
    UserSettings settings(file);
    EXPECT_FALSE(settings.write(kKey, "bCalloutFirst", std::string("1")));
    EXPECT_FALSE(settings.hasKey(kKey));
    ASSERT_TRUE(settings.createKey(kKey));
    EXPECT_TRUE(settings.hasKey("software\\VELDRIN Software"));
    const std::string odd = "a\"b\\c\n[x]=\r\xC3\xA9";
    EXPECT_TRUE(settings.write(kKey, "odd \"name\"", odd));
    EXPECT_TRUE(settings.write(kKey, "number", -7));
    EXPECT_TRUE(settings.write(kKey, "", std::string("own")));

    const UserSettings later(file);
    EXPECT_EQ(later.readText("HKEY_CURRENT_USER\\software\\veldrin software\\plumbing", "ODD \"NAME\""), odd);
    EXPECT_EQ(later.read(kKey, "number"), UserSettings::Value(-7));
    EXPECT_EQ(later.readText(kKey, "number"), std::nullopt);
    EXPECT_EQ(later.readText(kKey, ""), "own");
    EXPECT_EQ(later.subkeys("Software\\Veldrin Software"), std::vector<std::string>{"Plumbing"});
}

TEST_F(SettingsTest, twoProgramsSeeEachOthersChanges) {
    UserSettings one(file), two(file);
    ASSERT_TRUE(one.createKey(kKey));
    EXPECT_TRUE(two.write(kKey, "a", std::string("1")));
    EXPECT_TRUE(one.write(kKey, "b", std::string("2")));
    EXPECT_EQ(one.readText(kKey, "a"), "1");
    EXPECT_EQ(two.readText(kKey, "b"), "2");
    EXPECT_TRUE(two.remove(kKey, "a"));
    EXPECT_FALSE(one.remove(kKey, "a"));
    EXPECT_TRUE(one.removeKey("Software\\Veldrin Software"));
    EXPECT_FALSE(two.hasKey(kKey));
    EXPECT_TRUE(two.hasKey("Software"));
}

TEST_F(SettingsTest, foreignLinesAreNoValues) {
    fs::create_directories(file.parent_path());
    std::ofstream(file)
        << "\"lost\"=\"x\"\n[Key]\ngarbage\n\"open=\"\n\"n\"=12\n\"t\"=\"unended\n\"good\"=\"yes\"";
    UserSettings settings(file);
    EXPECT_EQ(settings.valueNames("Key"), (std::vector<std::string>{"good", "n"}));
}

TEST_F(SettingsTest, aFileThatCannotBeWrittenIsToldAndChangesNothing) {
    std::ofstream(folder / "deep") << "a file where the folder should be";
    UserSettings settings(file);
    EXPECT_FALSE(settings.createKey(kKey));
    EXPECT_NE(errno, 0);
    EXPECT_FALSE(settings.hasKey(kKey));
}

} // namespace
