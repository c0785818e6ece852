// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/ZoneFile.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <string>

namespace qk::internal {
namespace {

constexpr std::size_t kHeaderLength = 44;
constexpr std::size_t kCountsOffset = 20;
constexpr std::size_t kTimeRecordLength = 6;

// A number of `size` bytes, most significant first.
std::uint64_t bigEndian(std::string_view bytes, std::size_t offset, std::size_t size) {
    std::uint64_t value = 0;
    for (const char byte : bytes.substr(offset, size)) {
        value = value << 8U | static_cast<unsigned char>(byte);
    }
    return value;
}

std::int32_t signed32(std::string_view bytes, std::size_t offset) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(bigEndian(bytes, offset, 4)));
}

struct Header {
    char version = 0;
    std::uint64_t utIndicators = 0;
    std::uint64_t standardIndicators = 0;
    std::uint64_t leapSeconds = 0;
    std::uint64_t transitions = 0;
    std::uint64_t times = 0;
    std::uint64_t nameUnits = 0;

    // The length of the data behind this header. No sum of 32-bit counts overflows 64 bits.
    [[nodiscard]] std::uint64_t dataLength(std::uint64_t momentSize) const {
        return transitions * (momentSize + 1) + times * kTimeRecordLength + nameUnits + leapSeconds * (momentSize + 4) +
               standardIndicators + utIndicators;
    }
};

std::optional<Header> headerAt(std::string_view bytes) {
    if (bytes.size() < kHeaderLength || !bytes.starts_with("TZif")) {
        return std::nullopt;
    }
    const auto count = [bytes](std::size_t index) { return bigEndian(bytes, kCountsOffset + 4 * index, 4); };
    return Header{bytes[4], count(0), count(1), count(2), count(3), count(4), count(5)};
}

// The name that begins at `offset` of the names; nothing when no zero byte ends it.
std::optional<std::string> nameAt(std::string_view names, std::size_t offset) {
    const std::size_t end = names.find('\0', offset);
    return offset < names.size() && end != std::string_view::npos
               ? std::optional<std::string>(names.substr(offset, end - offset))
               : std::nullopt;
}

bool readTransitions(std::string_view data, const Header& header, std::size_t momentSize, ZoneFile& zone) {
    const auto count = static_cast<std::size_t>(header.transitions);
    zone.transitions.reserve(count);
    zone.timeAfter.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        zone.transitions.push_back(momentSize == 4
                                       ? signed32(data, index * 4)
                                       : static_cast<std::int64_t>(bigEndian(data, index * momentSize, momentSize)));
        zone.timeAfter.push_back(static_cast<std::uint8_t>(data[count * momentSize + index]));
    }
    return std::ranges::adjacent_find(zone.transitions, std::greater_equal<>()) == zone.transitions.end() &&
           std::ranges::all_of(zone.timeAfter, [&header](std::uint8_t time) { return time < header.times; });
}

bool readTimes(std::string_view data, const Header& header, std::size_t momentSize, ZoneFile& zone) {
    const std::string_view records = data.substr(static_cast<std::size_t>(header.transitions) * (momentSize + 1));
    const auto count = static_cast<std::size_t>(header.times);
    const std::string_view names =
        records.substr(count * kTimeRecordLength, static_cast<std::size_t>(header.nameUnits));
    for (std::size_t index = 0; index < count; ++index) {
        const std::string_view record = records.substr(index * kTimeRecordLength, kTimeRecordLength);
        const std::int32_t seconds = signed32(record, 0);
        std::optional<std::string> name = nameAt(names, static_cast<unsigned char>(record[5]));
        const bool isPlain = record[4] == 0 || record[4] == 1;
        if (!name.has_value() || !isPlain || seconds == std::numeric_limits<std::int32_t>::min()) {
            return false;
        }
        zone.times.push_back({seconds, record[4] == 1, *std::move(name)});
    }
    return true;
}

std::optional<ZoneFile> zoneOf(std::string_view data, const Header& header, std::size_t momentSize) {
    constexpr std::uint64_t kMostTimes = 256; // an index is a byte
    const auto isCount = [&header](std::uint64_t count) { return count == 0 || count == header.times; };
    ZoneFile zone;
    if (header.times == 0 || header.times > kMostTimes || !isCount(header.utIndicators) ||
        !isCount(header.standardIndicators) || !readTransitions(data, header, momentSize, zone) ||
        !readTimes(data, header, momentSize, zone)) {
        return std::nullopt;
    }
    return zone;
}

// A line feed, a rule or nothing, a line feed.
bool readFooter(std::string_view footer, ZoneFile& zone) {
    const std::size_t end = footer.find('\n', 1);
    if (!footer.starts_with('\n') || end == std::string_view::npos) {
        return false;
    }
    const std::string_view text = footer.substr(1, end - 1);
    if (!text.empty()) {
        zone.rule = ZoneRule::parse(text);
    }
    return text.empty() || zone.rule.has_value();
}

} // namespace

std::optional<ZoneFile> ZoneFile::parse(std::string_view bytes) {
    std::optional<Header> header = headerAt(bytes);
    if (!header.has_value() || bytes.size() - kHeaderLength < header->dataLength(4)) {
        return std::nullopt;
    }
    bytes.remove_prefix(kHeaderLength);
    if (header->version == 0) {
        return zoneOf(bytes, *header, 4);
    }
    // Later versions hold the same again with wider moments, and a rule.
    bytes.remove_prefix(static_cast<std::size_t>(header->dataLength(4)));
    header = headerAt(bytes);
    if (!header.has_value() || bytes.size() - kHeaderLength < header->dataLength(8)) {
        return std::nullopt;
    }
    bytes.remove_prefix(kHeaderLength);
    std::optional<ZoneFile> zone = zoneOf(bytes, *header, 8);
    if (zone.has_value() && !readFooter(bytes.substr(static_cast<std::size_t>(header->dataLength(8))), *zone)) {
        return std::nullopt;
    }
    return zone;
}

const LocalTime& ZoneFile::localTimeAt(std::int64_t moment) const {
    const auto next = std::ranges::upper_bound(transitions, moment);
    if (next == transitions.end() && rule.has_value()) {
        return rule->localTimeAt(moment);
    }
    if (next == transitions.begin()) {
        return times.front();
    }
    return times[timeAfter[static_cast<std::size_t>(next - transitions.begin()) - 1]];
}

} // namespace qk::internal
