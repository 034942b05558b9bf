#include "system/ProgramFolders.h"

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr const char* kProgramName = "veldrin";

} // namespace

fs::path programFolder() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path(error) : program.parent_path();
}

std::vector<fs::path> moduleFolders() {
    const fs::path here = programFolder();
    const fs::path root = here.parent_path();
    std::vector<fs::path> folders{here, root / "lib" / kProgramName, root / "lib64" / kProgramName};
    // Debian's libraries stand in a folder of their architecture.
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(root / "lib", error))
        if (entry.is_directory(error)) folders.push_back(entry.path() / kProgramName);
    return folders;
}

fs::path findDataFolder(std::string_view name) {
    const fs::path here = programFolder();
    std::error_code error;
    for (const fs::path& folder : {here, here.parent_path() / "share" / kProgramName})
        if (fs::is_directory(folder / name, error)) return folder / name;
    return {};
}

} // namespace veldrin
