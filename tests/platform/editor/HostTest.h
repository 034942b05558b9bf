#pragma once

#include "editor/CallFrames.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "editor/EditorEvents.h"
#include "lisp/Engine.h"
#include "lisp/Printer.h"
#include "runtime/Host.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

// An empty folder that goes when the test ends, and the place of the user's settings meanwhile.
class OwnFolder {
public:
    OwnFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "veldrin-editor-XXXXXX").string();
        m_path = mkdtemp(name.data());
        setenv("XDG_CONFIG_HOME", m_path.c_str(), 1);
    }
    ~OwnFolder() { std::filesystem::remove_all(m_path); }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::string file(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

// A host of the test's own, with what it prints in a text.
class HostTest : public testing::Test {
protected:
    HostTest() {
        host->commandLine().setSink([this](std::string_view text) { printed += text; });
    }

    std::string takePrinted() { return std::exchange(printed, {}); }
    veldrin::DocumentManager& documents() { return host->documents(); }

    // The value of Lisp code as `prin1` writes it, or what went wrong.
    std::string lisp(const std::string& code) {
        using Status = veldrin::lisp::Outcome::Status;
        const veldrin::lisp::Outcome outcome = host->lisp().runText(code);
        if (outcome.status == Status::Done) return veldrin::lisp::prin1Text(outcome.value);
        if (outcome.status == Status::Quit) return "quit " + std::to_string(outcome.exitStatus);
        return "error: " + outcome.error->message;
    }

    OwnFolder folder;
    std::string printed;
    std::unique_ptr<veldrin::Host> host = std::make_unique<veldrin::Host>();
};
