// Any bytes as an exchange file. It may be refused or read with losses; what was read can be drawn and
// listed, and is written to a file that is read again with as many entities.
#include "HostWithModule.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbEntity.h"
#include "drawing/EntityList.h"
#include "drawing/acdb.h"
#include "files/DxfExport.h"
#include "files/DxfImport.h"
#include "graphics/Recorder.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace {

int drawAll(AcDbDatabase& drawing) {
    int count = 0;
    for (const AcDbObjectId space : {drawing.modelSpaceId(), drawing.paperSpaceId()}) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(space);
        for (const AcDbObjectId id : block->entityIds()) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            if (!entity) continue;
            ++count;
            veldrin::DisplayList list;
            veldrin::Recorder recorder(list);
            veldrin::drawEntity(*entity.object(), recorder);
            acutRelRb(acdbEntGet(id, {"*"}));
        }
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    HostWithModule::instance();
    static const std::string path = "/dev/shm/veldrin-fuzz-" + std::to_string(getpid()) + ".dxf";
    veldrin::DxfImportReport report;
    auto imported = veldrin::importDxfBytes({reinterpret_cast<const char*>(data), size}, "input", report);
    auto* const drawing = std::get_if<std::unique_ptr<AcDbDatabase>>(&imported);
    if (!drawing) return 0;
    const int count = drawAll(**drawing);
    std::vector<std::string> losses;
    if (veldrin::exportDxf(**drawing, path, {}, losses)) std::abort();
    veldrin::DxfImportReport again;
    auto back = veldrin::importDxf(path, again);
    auto* const second = std::get_if<std::unique_ptr<AcDbDatabase>>(&back);
    if (!second || (drawAll(**second) != count && losses.empty())) std::abort();
    std::filesystem::remove(path);
    return 0;
}
