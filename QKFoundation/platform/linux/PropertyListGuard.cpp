// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListGuard.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace qk::platform {
namespace {

constexpr std::size_t kDeepest = 512;
constexpr std::size_t kMostValues = std::size_t{1} << 21U;

// The depth behind a plainly written tag ("<dict>", "</dict>", "<dict/>", "<key>"); nothing for a tag of another form.
std::optional<std::size_t> depthBehind(std::string_view tag, std::size_t depth) {
    const bool closes = tag.starts_with('/');
    const std::string_view name = tag.substr(closes ? 1 : 0);
    if (name == "array" || name == "dict") {
        if (closes && depth == 0) {
            return std::nullopt;
        }
        return closes ? depth - 1 : depth + 1;
    }
    static constexpr std::array<std::string_view, 14> kOthers = {"key",   "string",  "integer", "real",   "data",
                                                                 "date",  "true/",   "false/",  "array/", "dict/",
                                                                 "plist", "string/", "data/",   "key/"};
    return std::ranges::find(kOthers, name) != kOthers.end() ? std::optional(depth) : std::nullopt;
}

std::size_t countOf(std::string_view bytes, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = bytes.find(text); at != std::string_view::npos; at = bytes.find(text, at + text.size())) {
        ++count;
    }
    return count;
}

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = (value << 8U) | static_cast<unsigned char>(byte);
    }
    return value;
}

// The tables of a binary property list. Numbers are big-endian; a marker's upper half is the kind, its lower the count.
class BinaryTables {
public:
    static constexpr std::size_t kHeaderSize = 8;
    static constexpr std::size_t kTrailerSize = 32;
    static constexpr unsigned kArray = 0xA;
    static constexpr unsigned kSet = 0xC;
    static constexpr unsigned kDictionary = 0xD;
    static constexpr unsigned kLongCount = 0xF;

    static std::optional<BinaryTables> read(std::string_view bytes) {
        if (bytes.size() < kHeaderSize + kTrailerSize) {
            return std::nullopt;
        }
        const std::string_view trailer = bytes.substr(bytes.size() - kTrailerSize);
        BinaryTables tables;
        tables.bytes_ = bytes.substr(0, bytes.size() - kTrailerSize);
        tables.offsetSize_ = static_cast<unsigned char>(trailer[6]);
        tables.referenceSize_ = static_cast<unsigned char>(trailer[7]);
        tables.objects_ = bigEndian(trailer.substr(8, 8));
        tables.root_ = bigEndian(trailer.substr(16, 8));
        tables.offsets_ = bigEndian(trailer.substr(24, 8));
        const auto isSize = [](std::size_t size) { return size >= 1 && size <= 8; };
        const bool whole = isSize(tables.offsetSize_) && isSize(tables.referenceSize_) &&
                           tables.offsets_ >= kHeaderSize && tables.offsets_ <= tables.bytes_.size() &&
                           tables.objects_ <= (tables.bytes_.size() - tables.offsets_) / tables.offsetSize_ &&
                           tables.root_ < tables.objects_;
        return whole ? std::optional(tables) : std::nullopt;
    }

    [[nodiscard]] std::uint64_t root() const { return root_; }
    [[nodiscard]] std::uint64_t objects() const { return objects_; }

    // The objects that `object` holds; nothing when it does not lie within the bytes.
    [[nodiscard]] std::optional<std::vector<std::uint64_t>> children(std::uint64_t object) const {
        const std::uint64_t offset = bigEndian(bytes_.substr(offsets_ + object * offsetSize_, offsetSize_));
        if (offset < kHeaderSize || offset >= offsets_) {
            return std::nullopt;
        }
        std::string_view rest = bytes_.substr(offset, offsets_ - offset);
        const unsigned marker = static_cast<unsigned char>(rest.front());
        const unsigned kind = marker >> 4U;
        if (kind != kArray && kind != kSet && kind != kDictionary) {
            return std::vector<std::uint64_t>();
        }
        rest.remove_prefix(1);
        std::uint64_t count = marker & 0xFU;
        if (count == kLongCount) {
            if (rest.empty() || (static_cast<unsigned char>(rest.front()) & 0xFCU) != 0x10) {
                return std::nullopt;
            }
            const std::size_t size = std::size_t{1} << (static_cast<unsigned char>(rest.front()) & 0x3U);
            if (rest.size() < 1 + size) {
                return std::nullopt;
            }
            count = bigEndian(rest.substr(1, size));
            rest.remove_prefix(1 + size);
        }
        const std::uint64_t room = rest.size() / referenceSize_;
        if (count > room || (kind == kDictionary && count > room / 2)) {
            return std::nullopt;
        }
        std::vector<std::uint64_t> result(kind == kDictionary ? 2 * count : count);
        for (std::uint64_t& child : result) {
            child = bigEndian(rest.substr(0, referenceSize_));
            rest.remove_prefix(referenceSize_);
            if (child >= objects_) {
                return std::nullopt;
            }
        }
        return result;
    }

private:
    std::string_view bytes_; // without the trailer
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t offsets_ = 0;
};

struct Level {
    std::vector<std::uint64_t> children;
    std::size_t next = 0;
};

} // namespace

bool isTameXMLPropertyList(std::string_view bytes) {
    // The parser takes what is there of a file that was cut off.
    const std::string_view whole = bytes.substr(0, bytes.find_last_not_of(" \t\r\n") + 1);
    if (bytes.find("<plist") != std::string_view::npos && !whole.ends_with("</plist>")) {
        return false;
    }
    if (countOf(bytes, "<array") + countOf(bytes, "<dict") <= kDeepest) {
        return true;
    }
    // Only the prologue has tags of another form: the declaration, the document type and the opening <plist ...>.
    const std::size_t plist = bytes.find("<plist");
    const std::size_t begin = plist == std::string_view::npos ? plist : bytes.find('>', plist);
    if (begin == std::string_view::npos || countOf(bytes.substr(0, begin), "<") > 3) {
        return false;
    }
    bytes.remove_prefix(begin + 1);
    std::size_t depth = 0;
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos; at = bytes.find('<', at)) {
        const std::size_t end = bytes.find('>', at);
        if (end == std::string_view::npos) {
            return false;
        }
        const std::optional<std::size_t> behind = depthBehind(bytes.substr(at + 1, end - at - 1), depth);
        if (!behind.has_value() || *behind > kDeepest) {
            return false;
        }
        depth = *behind;
        at = end;
    }
    return true;
}

bool isTameBinaryPropertyList(std::string_view bytes) {
    const std::optional<BinaryTables> tables = BinaryTables::read(bytes);
    if (!tables.has_value()) {
        return false;
    }
    // Visits every value as often as the parser will copy it. A cycle ends at the greatest depth.
    std::size_t values = 1;
    std::vector<Level> path;
    path.push_back({{tables->root()}, 0});
    while (!path.empty()) {
        Level& level = path.back();
        if (level.next == level.children.size()) {
            path.pop_back();
            continue;
        }
        std::optional<std::vector<std::uint64_t>> children = tables->children(level.children[level.next++]);
        if (!children.has_value() || path.size() > kDeepest) {
            return false;
        }
        values += children->size();
        if (values > kMostValues) {
            return false;
        }
        path.push_back({*std::move(children), 0});
    }
    return true;
}

} // namespace qk::platform
