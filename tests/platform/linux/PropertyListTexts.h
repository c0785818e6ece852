// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Property lists as they lie in files, for the tests that read them.
namespace qk::tests {

/// An XML property list around `content`.
inline std::string document(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n" +
           content + "\n</plist>\n";
}

inline std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

/// A binary list of `objects` in this order, the first one its root, all offsets and references of one byte.
inline std::string binaryList(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += static_cast<char>(bytes.size());
        bytes += object;
    }
    const auto table = static_cast<char>(bytes.size());
    bytes += offsets;
    bytes += std::string(6, '\0') + "\x01\x01";
    bytes += std::string(7, '\0') + static_cast<char>(objects.size());
    bytes += std::string(8, '\0');
    bytes += std::string(7, '\0') + table;
    return bytes;
}

} // namespace qk::tests
