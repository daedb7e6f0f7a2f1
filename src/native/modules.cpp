#include "native/modules.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <filesystem>
#include <string>
#include <system_error>

#include "base/error.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

#ifdef _WIN32

fs::path program_path() {
    std::wstring path(32768, L'\0');  // the longest path there is
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

void* load(const fs::path& path) {
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

void* find(void* module, const char* function) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), function));
}

std::string cause(const fs::path& path) {
    return path.string() + ": " + std::system_category().message(static_cast<int>(GetLastError()));
}

#else

fs::path program_path() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

void* load(const fs::path& path) { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); }

void* find(void* module, const char* function) { return dlsym(module, function); }

// dlerror() names the file itself.
std::string cause(const fs::path& /*path*/) { return dlerror(); }

#endif

// Beside the program behind all links, or where an installation puts it.
fs::path module_path(const std::string& file_name) {
    const fs::path folder = program_path().parent_path();
    std::error_code error;
    if (fs::exists(folder / file_name, error)) return folder / file_name;
    return folder / MEMWRIGHT_MODULE_FOLDER / file_name;
}

template <class Function>
Function module_function(const std::string& module_name, const char* name) {
    const fs::path path = module_path(module_name + MEMWRIGHT_MODULE_SUFFIX);
    // Never closed: what it made may live as long as the program.
    void* const module = load(path);
    void* const function = module == nullptr ? nullptr : find(module, name);
    if (function == nullptr) {
        throw FileError("Cannot load a part of Memwright: " + cause(path) +
                        ".\nInstall Memwright again, with the packages that it depends on.");
    }
    return reinterpret_cast<Function>(function);
}

}  // namespace

std::unique_ptr<PortsAndPages> open_ports_and_pages(ModuleUse use) {
    return std::unique_ptr<PortsAndPages>(
        module_function<OpenPortsAndPages>("memwright-ports-and-pages", kOpenPortsAndPages)(use));
}

std::unique_ptr<Printer> open_printer(FileSystem& files) {
    return std::unique_ptr<Printer>(
        module_function<OpenPrinter>("memwright-printing", kOpenPrinter)(files));
}

}  // namespace memwright
