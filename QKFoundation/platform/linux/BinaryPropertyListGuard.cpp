// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListGuard.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

namespace qk::platform {
namespace {

constexpr std::size_t kMostValues = std::size_t{1} << 21U;
constexpr std::size_t kBytesLikeOneValue = 32;
constexpr double kNearSeconds = 2147483647;       // what 32 bits hold
constexpr double kMostSeconds = 9007199254740992; // 2^53: from there on whole seconds cannot be told apart

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = (value << 8U) | static_cast<unsigned char>(byte);
    }
    return value;
}

// Whether the UTF-16 text has neither U+0000 nor a lone surrogate.
bool isTameUTF16(std::string_view bytes) {
    bool isSecondExpected = false;
    for (; !bytes.empty(); bytes.remove_prefix(2)) {
        const std::uint64_t unit = bigEndian(bytes.substr(0, 2));
        const bool isSecond = (unit & 0xFC00U) == 0xDC00U;
        if (unit == 0 || isSecond != isSecondExpected) {
            return false;
        }
        isSecondExpected = (unit & 0xFC00U) == 0xD800U;
    }
    return !isSecondExpected;
}

// The upper half of an object's first byte.
enum class Kind : std::uint8_t {
    Constant = 0x0,
    Integer = 0x1,
    Real = 0x2,
    Date = 0x3,
    Data = 0x4,
    ASCII = 0x5,
    UTF16 = 0x6,
    Array = 0xA,
    Dictionary = 0xD,
};

struct Object {
    Kind kind = Kind::Constant;
    unsigned lower = 0;
    std::size_t count = 0;    // of what it has: bytes, units, values or pairs
    std::string_view content; // all bytes behind the first one and the count
};

// The tables of the file. Numbers are big-endian.
class Tables {
public:
    static std::optional<Tables> read(std::string_view bytes) {
        if (bytes.size() < kHeaderSize + kTrailerSize || !bytes.starts_with("bplist00")) {
            return std::nullopt;
        }
        const std::string_view trailer = bytes.substr(bytes.size() - kTrailerSize);
        Tables tables;
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

    [[nodiscard]] std::size_t root() const { return root_; }
    [[nodiscard]] std::size_t count() const { return objects_; }

    // The object of this number, its content cut to what belongs to it; nothing when it lies outside of the bytes.
    [[nodiscard]] std::optional<Object> object(std::size_t number) const {
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

    // The number that stands at `index` in the content of an array or a dictionary.
    [[nodiscard]] std::size_t reference(const Object& object, std::size_t index) const {
        return bigEndian(object.content.substr(index * referenceSize_, referenceSize_));
    }

private:
    static constexpr std::size_t kHeaderSize = 8;
    static constexpr std::size_t kTrailerSize = 32;
    static constexpr unsigned kLongCount = 0xF;

    // The bytes that each of the things takes that an object counts; 0 for what no property list has. Numbers and dates
    // are made to count their bytes.
    std::size_t sizeOfOne(Object& object) const {
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

    // Fifteen and more: the count is an integer of its own.
    static bool readCount(Object& object) {
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

    std::string_view bytes_; // without the trailer
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t offsets_ = 0;
};

// What is known of an object that has been seen.
struct Known {
    std::uint32_t values = 0; // when unfolded; 0 while it is not known
    std::uint16_t height = 0; // in containers
    bool isOpen = false;      // further up on the path: meeting it again is a cycle
    bool isString = false;
};

struct Level {
    std::size_t number;
    Object object;
    std::size_t next = 0; // of its references
    std::size_t values = 1;
    std::size_t height = 1;
};

// Walks everything that the root reaches, each object once.
class Walk {
public:
    explicit Walk(const Tables& tables, std::size_t size)
        : tables_(tables), most_(kMostValues + size / kBytesLikeOneValue) {}

    std::optional<TamePropertyList> run() {
        if (tables_.count() > most_) {
            return std::nullopt;
        }
        known_.resize(tables_.count());
        if (!visit(tables_.root())) {
            return std::nullopt;
        }
        while (!path_.empty()) {
            if (!step()) {
                return std::nullopt;
            }
        }
        return TamePropertyList{.corrected = std::nullopt, .hasFarDates = hasFarDates_};
    }

private:
    // Goes on with the deepest container.
    bool step() {
        Level& level = path_.back();
        const bool isDictionary = level.object.kind == Kind::Dictionary;
        if (level.next == level.object.count * (isDictionary ? 2 : 1)) {
            Known& known = known_[level.number];
            known = {static_cast<std::uint32_t>(level.values), static_cast<std::uint16_t>(level.height), false, false};
            path_.pop_back();
            return true;
        }
        const std::size_t child = tables_.reference(level.object, level.next);
        if (child >= known_.size() || known_[child].isOpen) {
            return false;
        }
        if (known_[child].values == 0) {
            return visit(child);
        }
        const Known& known = known_[child];
        const bool isKey = isDictionary && level.next < level.object.count;
        level.values += known.values;
        level.height = std::max<std::size_t>(level.height, known.height + std::size_t{1});
        ++level.next;
        return (!isKey || known.isString) && level.values <= most_ &&
               path_.size() + known.height <= kDeepestPropertyList;
    }

    bool visit(std::size_t number) {
        const std::optional<Object> object = tables_.object(number);
        if (!object.has_value()) {
            return false;
        }
        if (object->kind == Kind::Array || object->kind == Kind::Dictionary) {
            known_[number].isOpen = true;
            path_.push_back({number, *object});
            return path_.size() <= kDeepestPropertyList;
        }
        known_[number].values = static_cast<std::uint32_t>(1 + object->content.size() / kBytesLikeOneValue);
        known_[number].isString = object->kind == Kind::ASCII || object->kind == Kind::UTF16;
        return isTame(*object);
    }

    bool isTame(const Object& object) {
        const std::string_view content = object.content;
        switch (object.kind) {
        case Kind::Integer: // of the widest ones only those that need the width are ever written
            return content.size() < 16 || bigEndian(content.substr(0, 8)) == 0;
        case Kind::Date: {
            const auto seconds = std::bit_cast<double>(bigEndian(content));
            hasFarDates_ = hasFarDates_ || !(std::fabs(seconds) < kNearSeconds) || std::trunc(seconds) != seconds;
            return std::fabs(seconds) < kMostSeconds;
        }
        case Kind::ASCII: return unicode::isASCII(content) && content.find('\0') == std::string_view::npos;
        case Kind::UTF16: return isTameUTF16(content);
        default: return true;
        }
    }

    const Tables& tables_;
    const std::size_t most_;
    std::vector<Known> known_;
    std::vector<Level> path_;
    bool hasFarDates_ = false;
};

} // namespace

std::optional<TamePropertyList> tameBinaryPropertyList(std::string_view bytes) {
    const std::optional<Tables> tables = Tables::read(bytes);
    return tables.has_value() ? Walk(*tables, bytes.size()).run() : std::nullopt;
}

} // namespace qk::platform
