#pragma once

// What the tests of the machine's file system share.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "fakes/temporary_folder.h"
#include "platform/error.h"
#include "platform/native_file_system.h"

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

// The text of the FileError that saving gives, or "saved".
inline std::string saving(const std::string& path, const Bytes& bytes) {
    try {
        NativeFileSystem().overwrite(path, bytes);
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

inline bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace memwright
