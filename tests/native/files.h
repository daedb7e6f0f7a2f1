#pragma once

// What the tests of the machine's file system share.

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <span>
#include <string>

#include "base/error.h"
#include "native/file_system.h"
#include "support/temporary_folder.h"

namespace memwright {

// Bytes whose order and number show.
inline Bytes pattern(std::size_t size, int start = 0) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(static_cast<std::size_t>(start) + i * 13 + i / 256);
    }
    return bytes;
}

inline Bytes read_all(const std::string& path, std::size_t limit) {
    Bytes bytes;
    NativeFileSystem().read(path, limit, bytes);
    return bytes;
}

// Writing over the start of a file, or in the place of the whole of it.
struct WayToSave {
    const char* name;
    void (NativeFileSystem::*save)(const std::string& path, std::span<const std::uint8_t> bytes);

    bool keeps_rest() const { return save == &NativeFileSystem::overwrite; }
    friend std::ostream& operator<<(std::ostream& out, const WayToSave& way) {
        return out << way.name;
    }
};
inline constexpr WayToSave kOverwrite{"overwrite", &NativeFileSystem::overwrite};
inline constexpr WayToSave kReplace{"replace", &NativeFileSystem::replace};

// The text of the FileError that saving gives, or "saved".
inline std::string saving(const std::string& path, const Bytes& bytes,
                          const WayToSave& way = kOverwrite) {
    try {
        (NativeFileSystem().*way.save)(path, bytes);
        return "saved";
    } catch (const FileError& error) {
        return error.what();
    }
}

// The text of the FileError that reading gives, or "read".
inline std::string reading(const std::string& path) {
    try {
        read_all(path, 7392);
        return "read";
    } catch (const FileError& error) {
        return error.what();
    }
}

// The text of the FileError that opening a file to read it in pieces gives, or "opened".
inline std::string opening(const std::string& path) {
    try {
        NativeFileSystem().open_input(path);
        return "opened";
    } catch (const FileError& error) {
        return error.what();
    }
}

// Cases that hold for both ways.
class BothWaysToSave : public testing::TestWithParam<WayToSave> {
  protected:
    static std::string saving(const std::string& path, const Bytes& bytes) {
        return memwright::saving(path, bytes, GetParam());
    }
};

inline const auto kBothWays = testing::Values(kOverwrite, kReplace);
inline std::string name_of_way(const testing::TestParamInfo<WayToSave>& way) {
    return way.param.name;
}

inline bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace memwright
