#include "platform/modules.h"

#include <dlfcn.h>

#include <filesystem>
#include <string>

#include "platform/error.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

// The folder of the running program, behind links.
fs::path program_folder() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : program.parent_path();
}

template <class Function>
Function module_function(const char* name, const char* function) {
    const fs::path folder = program_folder();
    const fs::path installed = folder / MEMWRIGHT_MODULE_FOLDER / name;
    std::error_code error;
    const fs::path path = fs::exists(folder / name, error) ? folder / name : installed;
    // Never closed: what it made may live as long as the program.
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const found = module == nullptr ? nullptr : dlsym(module, function);
    if (found == nullptr) {
        throw FileError("Cannot load a part of Memwright: " + std::string(dlerror()) +
                        ".\nInstall Memwright again, with the packages that it depends on.");
    }
    return reinterpret_cast<Function>(found);
}

}  // namespace

std::unique_ptr<Desk> open_desk(DeskWork work) {
    return std::unique_ptr<Desk>(module_function<OpenDesk>("memwright-desk.so", kOpenDesk)(work));
}

std::unique_ptr<Printer> open_printer(FileSystem& files) {
    return std::unique_ptr<Printer>(
        module_function<OpenPrinter>("memwright-printing.so", kOpenPrinter)(files));
}

}  // namespace memwright
