// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ServiceNames.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/LinuxCrypto.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <unordered_map>

namespace qk::platform {
namespace {

constexpr std::size_t kUUIDBytes = 16;
constexpr std::size_t kMostNames = 4096; // interfaces of containers come and go

// A digest for each interface and reading would cost more than everything else about it.
struct Memory {
    std::mutex mutex;
    std::unordered_map<std::string, ServiceNames> names;
};

Memory& memory() {
    static Memory& instance = *new Memory; // never destroyed: threads may still ask while the program ends
    return instance;
}

} // namespace

std::string nameBasedUUID(std::string_view space, std::string_view name) {
    std::string text(space);
    text += name;
    const auto digest = LinuxCrypto().SHA1(std::as_bytes(std::span(text)));
    std::string result;
    for (std::size_t index = 0; index < kUUIDBytes; ++index) {
        unsigned byte = digest.has_value() ? std::to_integer<unsigned>((*digest)[index]) : 0;
        if (digest.has_value() && index == 6) {
            byte = (byte & 0x0FU) | 0x50U; // the version
        } else if (digest.has_value() && index == 8) {
            byte = (byte & 0x3FU) | 0x80U; // the variant
        }
        if (index == 4 || index == 6 || index == 8 || index == 10) {
            result += '-';
        }
        constexpr std::string_view kDigits = "0123456789ABCDEF";
        result += kDigits[byte >> 4U];
        result += kDigits[byte & 0xFU];
    }
    return result;
}

std::string machineIdentifier(std::string_view content) {
    std::string bytes;
    const std::string_view digits = content.substr(0, content.find('\n'));
    for (std::size_t index = 0; digits.size() == 2 * kUUIDBytes && index < digits.size(); index += 2) {
        const auto byte = parse::number<std::uint8_t>(digits.substr(index, 2), 16);
        if (!byte.has_value()) {
            break;
        }
        bytes.push_back(static_cast<char>(*byte));
    }
    return bytes.size() == kUUIDBytes ? bytes : std::string(kUUIDBytes, '\0');
}

ServiceNames ServiceNamer::make(std::string_view interfaceName) {
    if (!machine_.has_value()) {
        machine_ = machineIdentifier(readBytes(root_.path("/etc/machine-id")).value_or(std::string()));
    }
    return {stringWithFileSystemRepresentation(interfaceName),
            NSString::fromUTF8Lossy(nameBasedUUID(*machine_, interfaceName))};
}

ServiceNames ServiceNamer::names(const std::string& interfaceName) {
    if (!root_.isHost()) {
        return make(interfaceName);
    }
    Memory& known = memory();
    const std::scoped_lock lock(known.mutex);
    const auto found = known.names.find(interfaceName);
    if (found != known.names.end()) {
        return found->second;
    }
    if (known.names.size() >= kMostNames) {
        known.names.clear();
    }
    return known.names.emplace(interfaceName, make(interfaceName)).first->second;
}

} // namespace qk::platform
