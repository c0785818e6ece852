// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileURLs.h"
#include "QKFoundation/platform/linux/parse/Mounts.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// mountinfo, utab and records of the device database. What was read, escaped again, reads the same, and every path has
/// a URL.
namespace {

using qk::fuzz::require;
using namespace qk::platform;

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\\') {
            const auto value = static_cast<unsigned char>(byte);
            for (const unsigned shift : {6U, 3U, 0U}) {
                text.insert(text.end(), static_cast<char>('0' + ((value >> shift) & 7U)));
            }
            text.insert(text.size() - 3, 1, '\\');
        } else {
            text.push_back(byte);
        }
    }
    return text;
}

void checkMounts(std::string_view text) {
    const std::vector<parse::Mount> mounts = parse::mounts(text);
    std::string written;
    for (const parse::Mount& mount : mounts) {
        written += "1 2 " + mount.device + " " + escaped(mount.root) + " " + escaped(mount.path) + " rw shared:1 - " +
                   escaped(mount.type) + " " + escaped(mount.source) + " " + escaped(mount.superOptions) + "\n";
        require(!folderURL(mount.path).absoluteString().isEmpty());
        const bool isRemote = isRemoteType(mount.type);
        require(isRemote || !remountURL(mount.type, mount.source).has_value());
        require(!remountURL("ext4", mount.source).has_value());
        require(remountURL("nfs", mount.source).has_value());
    }
    require(parse::mounts(written) == mounts);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkMounts(text);
    for (const std::string& path : parse::hiddenMounts(text)) {
        require(!path.empty());
    }
    require(text.size() >= parse::deviceProperty(text, "E:ID_FS_LABEL=").size());
    static_cast<void>(parse::hasOption(text, "subvol=/"));
    return 0;
}
