// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/InotifyNames.h"

#include <algorithm>
#include <cstdint>

namespace qk::platform {
namespace {

constexpr std::size_t kHeader = 3; // whether it is there, and two bytes for the length
constexpr unsigned kByte = 8;
constexpr std::size_t kSmall = 4096;

} // namespace

void InotifyNames::append(std::string_view name, bool isThere) {
    const auto length = static_cast<std::uint16_t>(name.size());
    bytes_.push_back(isThere ? '+' : '-');
    bytes_.push_back(static_cast<char>(length >> kByte));
    bytes_.push_back(static_cast<char>(length));
    bytes_.append(name);
}

void InotifyNames::note(std::string_view name, bool isThere) {
    append(name, isThere);
    // Files that come and go under a few names must not add up for ever.
    if (!isThere && bytes_.size() > std::max(compactAt_, kSmall)) {
        const Known known = take();
        for (const std::string& each : known) {
            append(each, true);
        }
        compactAt_ = 2 * bytes_.size();
    }
}

InotifyNames::Known InotifyNames::read() const {
    Known known;
    for (std::size_t at = 0; at + kHeader <= bytes_.size();) {
        const auto high = static_cast<unsigned char>(bytes_[at + 1]);
        const auto low = static_cast<unsigned char>(bytes_[at + 2]);
        const std::size_t length = (std::size_t{high} << kByte) | low;
        std::string name = bytes_.substr(at + kHeader, length);
        if (bytes_[at] == '+') {
            known.insert(std::move(name));
        } else {
            known.erase(name);
        }
        at += kHeader + length;
    }
    return known;
}

InotifyNames::Known InotifyNames::take() {
    Known known = read();
    bytes_ = {};
    compactAt_ = 0;
    return known;
}

} // namespace qk::platform
