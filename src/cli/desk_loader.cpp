#include "cli/desk_loader.h"

#include <dlfcn.h>

#include <filesystem>
#include <string>

#include "platform/error.h"

namespace memwright::cli {
namespace {

namespace fs = std::filesystem;

constexpr const char* kModule = "memwright-desk.so";

// The folder of the running program, behind links.
fs::path program_folder() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : program.parent_path();
}

}  // namespace

std::unique_ptr<Desk> open_desk(DeskWork work) {
    const fs::path folder = program_folder();
    const fs::path installed = folder / MEMWRIGHT_MODULE_FOLDER / kModule;
    std::error_code error;
    const fs::path path = fs::exists(folder / kModule, error) ? folder / kModule : installed;
    // Never closed: what it made may live as long as the program.
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const function = module == nullptr ? nullptr : dlsym(module, kOpenDesk);
    if (function == nullptr) {
        throw FileError("Cannot load what this command needs: " + std::string(dlerror()) +
                        ".\nInstall Memwright again, with the packages that it depends on.");
    }
    return std::unique_ptr<Desk>(reinterpret_cast<OpenDesk>(function)(work));
}

}  // namespace memwright::cli
