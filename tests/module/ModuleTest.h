#pragma once

#include "graphics/Recorder.h"
#include "host/HandlerFrame.h"
#include "pipe/PlumbPipe.h"
#include "runtime/Host.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

// An empty folder that goes when the test ends; the user's settings lie there meanwhile.
class OwnFolder {
public:
    OwnFolder();
    ~OwnFolder();
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    std::string file(const std::string& name) const { return m_path + "/" + name; }
    // Makes an empty file, and the folders above it.
    std::string touch(const std::string& name) const;
    std::string makeFolder(const std::string& name) const;

private:
    std::string m_path;
};

// A host with one unnamed drawing and the module loaded into it, and what is printed.
class ModuleTest : public testing::Test {
protected:
    ModuleTest();
    ~ModuleTest() override;

    std::string takePrinted() { return std::exchange(printed, {}); }
    // The value of Lisp code as `prin1` writes it, or "error: " and what went wrong.
    std::string lisp(const std::string& code);

    AcDbObjectId addLayer(const std::string& name, const char* linetype = nullptr);

    OwnFolder folder;
    std::string printed;
    std::unique_ptr<veldrin::Host> host;
};

// What an entity draws, a line for each primitive:
//   line X,Y,Z X,Y,Z | circle X,Y,Z R | arc START CENTER R SWEEP NORMAL-Z | curve P... | text X,Y,Z ROTATION
//   CONTENTS
// with " @LAYER" behind those that are not on the entity's own layer. Numbers have six decimals, trimmed.
std::vector<std::string> pictureOf(AcDbEntity& entity);
std::vector<std::string> pictureOfList(const plumb::PlumbPipe& pipe); // of the list sink

std::string pointText(const AcGePoint3d& p);
std::string numberText(double value);

using Lines = std::vector<std::string>;

// A pipe that is in no drawing.
inline void setEnds(plumb::PlumbPipe& pipe, const AcGePoint3d& start, const AcGePoint3d& end) {
    pipe.setStart(start, true);
    pipe.setEnd(end, true);
}
