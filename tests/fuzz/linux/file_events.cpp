// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FanotifyTrees.h"
#include "QKFoundation/platform/linux/parse/FileEvents.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the kernel writes about files that change, in both of its formats. The events lie within the bytes, reading
/// ends, and every path that comes of them is in the tree and has no component more than its folder has.
namespace {

using qk::fuzz::require;
using namespace qk::platform;

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : all_(std::as_bytes(std::span(data, size))) {}

    [[nodiscard]] bool hold(std::string_view text) const {
        const auto* const first = reinterpret_cast<const char*>(all_.data());
        return text.empty() || (text.data() >= first && text.data() + text.size() <= first + all_.size());
    }
    [[nodiscard]] std::span<const std::byte> all() const { return all_; }

private:
    std::span<const std::byte> all_;
};

void checkName(const Bytes& bytes, std::string_view name) {
    require(bytes.hold(name));
    require(name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos);
}

void readInotify(const Bytes& bytes) {
    std::span<const std::byte> rest = bytes.all();
    for (std::size_t before = rest.size(); const auto event = parse::takeInotifyEvent(rest); before = rest.size()) {
        require(rest.size() < before);
        checkName(bytes, event->name);
    }
    require(rest.empty());
}

std::vector<parse::FanotifyEvent> readFanotify(const Bytes& bytes) {
    std::vector<parse::FanotifyEvent> events;
    std::span<const std::byte> rest = bytes.all();
    for (std::size_t before = rest.size(); const auto event = parse::takeFanotifyEvent(rest); before = rest.size()) {
        require(rest.size() < before);
        checkName(bytes, event->name);
        require(bytes.hold(event->folder.handle) && bytes.hold(event->target.handle));
        events.push_back(*event);
    }
    require(rest.empty());
    return events;
}

// Folders whose handle is short are there; the others are gone.
std::optional<std::string> find(const parse::FileIdentity& folder) {
    static constexpr std::size_t kShort = 4;
    if (folder.handle.size() > kShort) {
        return std::nullopt;
    }
    return folder.handle.empty() ? "" : folder.handle.size() == 1 ? "/top" : "/top/below";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes(data, size);
    readInotify(bytes);
    const std::vector<parse::FanotifyEvent> events = readFanotify(bytes);
    std::size_t told = 0;
    FanotifyTrees trees({"/top"}, find);
    static_cast<void>(trees.take(events, [&](const std::string& path, std::uint64_t /*mask*/) {
        ++told;
        require(path == "/top" || path.starts_with("/top/"));
    }));
    require(told <= events.size());
    return 0;
}
