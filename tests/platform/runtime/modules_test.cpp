#include "runtime/AcRxClass.h"
#include "runtime/CException.h"
#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace veldrin::tests {
namespace {

namespace fs = std::filesystem;

// The module that lies beside this program tells each message in the environment, and behaves as told there.
class Modules : public ::testing::Test {
protected:
    Modules() {
        setenv("TEST_MODULE_LOG", "", 1);
        setenv("TEST_MODULE_DOES", "", 1);
        ModuleLoader::Hooks hooks;
        hooks.print = [this](const std::string& line) { printed.push_back(line); };
        hooks.forEachDocument = [](const std::function<void()>& action) {
            action();
            action();
        };
        hooks.unloading = [this](const LoadedModule& module) { forgotten.push_back(module.name()); };
        loader.setHooks(std::move(hooks));
        loader.setSearchFolders({fs::read_symlink("/proc/self/exe").parent_path()});
    }
    ~Modules() override { loader.unloadAll(); }

    static std::string log() { return std::getenv("TEST_MODULE_LOG"); }
    static void moduleDoes(const char* what) { setenv("TEST_MODULE_DOES", what, 1); }

    Host host;
    ModuleLoader& loader = host.modules();
    std::vector<std::string> printed;
    std::vector<std::string> forgotten;
};

TEST_F(Modules, MessagesComeInTheirOrderAndTheModuleLeavesTheMemory) {
    for (int round = 0; round < 2; ++round) {
        setenv("TEST_MODULE_LOG", "", 1);
        ASSERT_EQ(loader.load("test_module"), ModuleStatus::kDone);
        EXPECT_EQ(loader.names(), std::vector<std::string>{"test_module"});
        loader.sendToAll(AcRx::kLoadDwgMsg);
        EXPECT_NE(acrxClassByName("TestModulePart"), nullptr);
        EXPECT_EQ(loader.unload("test_module.arx"), ModuleStatus::kDone);
        EXPECT_EQ(log(), "1:1 3:2 3:3 3:4 4:5 4:6 2:7 ") << "its counter starts anew in round " << round;
        EXPECT_EQ(acrxClassByName("TestModulePart"), nullptr) << "which it forgot to take away";
    }
    EXPECT_EQ(forgotten.size(), 2U);
    EXPECT_TRUE(printed.empty());
    EXPECT_EQ(loader.current(), nullptr);
}

TEST_F(Modules, WhatCannotBeLoadedIsSaidInOneLine) {
    const fs::path folder = fs::temp_directory_path() / "veldrin-modules-test";
    fs::create_directories(folder);
    const fs::path text = folder / "text.arx";
    std::ofstream(text) << "no library";
    const std::string library = (fs::read_symlink("/proc/self/exe").parent_path() / "libveldrin.so").string();
    EXPECT_EQ(loader.load("missing"), ModuleStatus::kNotFound);
    EXPECT_EQ(loader.load(text.string()), ModuleStatus::kNotAModule);
    EXPECT_EQ(loader.load(folder.string()), ModuleStatus::kNotFound);
    EXPECT_EQ(loader.load(library), ModuleStatus::kNotAModule);
    EXPECT_EQ(loader.unload("missing"), ModuleStatus::kNotLoaded);
    EXPECT_EQ(printed.size(), 5U);
    EXPECT_EQ(printed.front(), "missing cannot be found.");
    for (const std::string& line : printed) EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    EXPECT_TRUE(loader.names().empty());
    fs::remove_all(folder);
}

TEST_F(Modules, AModuleThatRefusesIsGoneAgain) {
    for (const char* way : {"refuse", "throw"}) {
        printed.clear();
        moduleDoes(way);
        EXPECT_EQ(loader.load("test_module"), ModuleStatus::kRefused) << way;
        EXPECT_EQ(printed.size(), 1U);
        EXPECT_TRUE(loader.names().empty());
        EXPECT_EQ(acrxClassByName("TestModulePart"), nullptr);
    }
    moduleDoes("");
    EXPECT_EQ(loader.load("test_module"), ModuleStatus::kDone);
    EXPECT_EQ(loader.load("test_module"), ModuleStatus::kAlreadyLoaded);
}

TEST_F(Modules, UnloadingWaitsForLocksAndRunningFunctions) {
    moduleDoes("lock");
    ASSERT_EQ(loader.load("test_module"), ModuleStatus::kDone);
    EXPECT_EQ(loader.unload("test_module"), ModuleStatus::kLocked);
    loader.unloadAll();
    moduleDoes("remember");
    ASSERT_EQ(loader.load("test_module"), ModuleStatus::kDone);
    const void* const package =
        reinterpret_cast<void*>(std::strtoull(std::getenv("TEST_MODULE_PACKAGE"), nullptr, 16));
    const auto* const module = static_cast<const LoadedModule*>(package);
    ASSERT_TRUE(loader.isPackage(package));
    loader.enterCall(module);
    EXPECT_EQ(loader.unload("test_module"), ModuleStatus::kBusy);
    loader.leaveCall(module);
    EXPECT_EQ(loader.unload("test_module"), ModuleStatus::kDone);
    EXPECT_FALSE(loader.unlock(package)) << "what is gone is no package";
}

TEST_F(Modules, TheTableEngineIsStartedOnceAndMayFail) {
    int started = 0;
    loader.setDaoStarter([&] {
        if (++started == 1) throw CException("no engine");
    });
    EXPECT_THROW(AfxDaoInit(), CException);
    EXPECT_EQ(AfxGetModuleState()->m_pDaoState, nullptr);
    AfxDaoInit();
    ASSERT_NE(AfxGetModuleState()->m_pDaoState, nullptr);
    AfxDaoTerm();
    delete AfxGetModuleState()->m_pDaoState;
    AfxGetModuleState()->m_pDaoState = nullptr;
}

TEST_F(Modules, OpeningOnADesktopThatIsNotThereFails) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY"}) unsetenv(variable);
    EXPECT_LE(ShellExecute("open", "http://localhost/"), 32);
    EXPECT_LE(ShellExecute("open", ""), 32);
    EXPECT_LE(ShellExecute("print", "file"), 32);
}

} // namespace
} // namespace veldrin::tests
