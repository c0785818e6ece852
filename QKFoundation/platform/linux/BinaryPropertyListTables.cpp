// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BinaryPropertyListTables.h"

namespace qk::platform {
namespace {

using Object = BinaryPropertyListObject;
using Kind = Object::Kind;

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;
constexpr unsigned kLongCount = 0xF;

// Fifteen and more: the count is an integer of its own.
bool readCount(Object& object) {
    std::string_view& rest = object.content;
    if (rest.empty() || (static_cast<unsigned char>(rest.front()) & 0xFCU) != 0x10) {
        return false;
    }
    const std::size_t size = std::size_t{1} << (static_cast<unsigned char>(rest.front()) & 0x3U);
    if (rest.size() < 1 + size) {
        return false;
    }
    object.count = bigEndian(rest.substr(1, size));
    rest.remove_prefix(1 + size);
    return true;
}

} // namespace

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = (value << 8U) | static_cast<unsigned char>(byte);
    }
    return value;
}

std::optional<BinaryPropertyListTables> BinaryPropertyListTables::read(std::string_view bytes) {
    if (bytes.size() < kHeaderSize + kTrailerSize || !bytes.starts_with("bplist00")) {
        return std::nullopt;
    }
    const std::string_view trailer = bytes.substr(bytes.size() - kTrailerSize);
    BinaryPropertyListTables tables;
    tables.bytes_ = bytes.substr(0, bytes.size() - kTrailerSize);
    tables.offsetSize_ = static_cast<unsigned char>(trailer[6]);
    tables.referenceSize_ = static_cast<unsigned char>(trailer[7]);
    tables.objects_ = bigEndian(trailer.substr(8, 8));
    tables.root_ = bigEndian(trailer.substr(16, 8));
    tables.offsets_ = bigEndian(trailer.substr(24, 8));
    const auto isSize = [](std::size_t size) { return size >= 1 && size <= 8; };
    const bool isWhole = isSize(tables.offsetSize_) && isSize(tables.referenceSize_) &&
                         tables.offsets_ >= kHeaderSize && tables.offsets_ <= tables.bytes_.size() &&
                         tables.objects_ <= (tables.bytes_.size() - tables.offsets_) / tables.offsetSize_ &&
                         tables.root_ < tables.objects_;
    return isWhole ? std::optional(tables) : std::nullopt;
}

std::optional<Object> BinaryPropertyListTables::object(std::size_t number) const {
    const std::uint64_t offset = bigEndian(bytes_.substr(offsets_ + number * offsetSize_, offsetSize_));
    if (offset < kHeaderSize || offset >= offsets_) {
        return std::nullopt;
    }
    const auto marker = static_cast<unsigned char>(bytes_[offset]);
    Object object{static_cast<Kind>(marker >> 4U), marker & 0xFU, marker & 0xFU,
                  bytes_.substr(offset + 1, offsets_ - offset - 1)};
    const std::size_t size = sizeOfOne(object);
    if (size == 0 || (object.kind >= Kind::Data && object.lower == kLongCount && !readCount(object)) ||
        object.count > object.content.size() / size) {
        return std::nullopt;
    }
    object.content = object.content.substr(0, object.count * size);
    return object;
}

// The bytes that each of the things takes that an object counts; 0 for what no property list has. Numbers and dates
// are made to count their bytes.
std::size_t BinaryPropertyListTables::sizeOfOne(Object& object) const {
    switch (object.kind) {
    case Kind::Constant: object.count = 0; return object.lower == 0x8 || object.lower == 0x9 ? 1 : 0;
    case Kind::Integer: object.count = std::size_t{1} << object.lower; return object.lower <= 4 ? 1 : 0;
    case Kind::Real:
        object.count = std::size_t{1} << object.lower;
        return object.lower == 2 || object.lower == 3 ? 1 : 0;
    case Kind::Date: object.count = 8; return object.lower == 3 ? 1 : 0;
    case Kind::Data:
    case Kind::ASCII: return 1;
    case Kind::UTF16: return 2;
    case Kind::Array: return referenceSize_;
    case Kind::Dictionary: return 2 * referenceSize_;
    }
    return 0;
}

} // namespace qk::platform
