// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BinaryPropertyListTables.h"
#include "QKFoundation/platform/linux/PropertyListReading.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using Tables = BinaryPropertyListTables;
using Object = BinaryPropertyListObject;
using Kind = Object::Kind;

constexpr std::size_t kMostValues = std::size_t{1} << 21U;
constexpr std::size_t kBytesLikeOneValue = 32;

// The string of UTF-16 units; nothing when there is U+0000 or a lone surrogate.
std::optional<Value> utf16String(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    bool isSecondExpected = false;
    for (; !bytes.empty(); bytes.remove_prefix(2)) {
        const auto unit = static_cast<char16_t>(bigEndian(bytes.substr(0, 2)));
        const bool isSecond = (unit & 0xFC00U) == 0xDC00U;
        if (unit == 0 || isSecond != isSecondExpected) {
            return std::nullopt;
        }
        isSecondExpected = (unit & 0xFC00U) == 0xD800U;
        units += unit;
    }
    return isSecondExpected ? std::nullopt : std::optional<Value>(NSString(units));
}

std::optional<Value> asciiString(std::string_view bytes) {
    const bool isText = unicode::isASCII(bytes) && bytes.find('\0') == std::string_view::npos;
    return isText ? NSString::fromUTF8(bytes) : std::nullopt;
}

std::optional<Value> date(std::string_view bytes) {
    const auto seconds = std::bit_cast<double>(bigEndian(bytes));
    const bool isKept = std::fabs(seconds) < kMostPropertyListSeconds;
    return isKept ? std::optional<Value>(NSDate::dateWithTimeIntervalSince1970(seconds + kSecondsFrom1970To2001))
                  : std::nullopt;
}

// Only the integers of 8 bytes have a sign. Of the widest ones those are written alone that need the width.
std::optional<Value> integer(std::string_view bytes) {
    if (bytes.size() == 8) {
        return Value(static_cast<std::int64_t>(bigEndian(bytes)));
    }
    const std::size_t surplus = bytes.size() - std::min<std::size_t>(bytes.size(), 8);
    return bigEndian(bytes.substr(0, surplus)) == 0 ? std::optional<Value>(bigEndian(bytes.substr(surplus)))
                                                    : std::nullopt;
}

double real(std::string_view bytes) {
    const std::uint64_t bits = bigEndian(bytes);
    return bytes.size() == 4 ? static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)))
                             : std::bit_cast<double>(bits);
}

// The value of what is no container; nothing when its content is none.
std::optional<Value> scalar(const Object& object) {
    switch (object.kind) {
    case Kind::Constant: return Value(object.lower == 0x9);
    case Kind::Integer: return integer(object.content);
    case Kind::Real: return Value(real(object.content));
    case Kind::Date: return date(object.content);
    case Kind::Data: return Value(NSData(object.content));
    case Kind::ASCII: return asciiString(object.content);
    case Kind::UTF16: return utf16String(object.content);
    default: return std::nullopt;
    }
}

// What is known of an object that has been seen.
struct Known {
    std::uint32_t values = 0; // when unfolded; 0 while it is not known
    std::uint16_t height = 0; // in containers
    bool isOpen = false;      // further up on the path: meeting it again is a cycle
    Value value;              // which is made once, wherever it is named
};

struct Level {
    std::size_t number;
    Object object;
    std::size_t next = 0; // of its references
    std::size_t values = 1;
    std::size_t height = 1;
};

// Walks everything that the root reaches, each object once, and makes its value on the way back.
class Walk {
public:
    explicit Walk(const Tables& tables, std::size_t size)
        : tables_(tables), most_(kMostValues + size / kBytesLikeOneValue) {}

    std::optional<Value> run() {
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
        return std::move(known_[tables_.root()].value);
    }

private:
    // Goes on with the deepest container.
    bool step() {
        Level& level = path_.back();
        const bool isDictionary = level.object.kind == Kind::Dictionary;
        if (level.next == level.object.count * (isDictionary ? 2 : 1)) {
            known_[level.number] = {static_cast<std::uint32_t>(level.values), static_cast<std::uint16_t>(level.height),
                                    false, isDictionary ? dictionary(level.object) : array(level.object)};
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
        return (!isKey || known.value.as<NSString>() != nullptr) && level.values <= most_ && isAffordable(1) &&
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
        const std::size_t weight = object->content.size() / kBytesLikeOneValue;
        std::optional<Value> value = isAffordable(weight) ? scalar(*object) : std::nullopt;
        if (!value.has_value()) {
            return false;
        }
        known_[number].values = static_cast<std::uint32_t>(1 + weight);
        known_[number].value = *std::move(value);
        return true;
    }

    // Objects may overlap, and a container learns only at its end what is in it: what has been made so far counts as
    // well. It is never more than what the root unfolds into.
    bool isAffordable(std::size_t values) {
        made_ += values;
        return made_ <= most_;
    }

    [[nodiscard]] const Value& element(const Object& object, std::size_t index) const {
        return known_[tables_.reference(object, index)].value;
    }

    [[nodiscard]] Value array(const Object& object) const {
        std::vector<Value> values;
        values.reserve(object.count);
        for (std::size_t index = 0; index < object.count; ++index) {
            values.push_back(element(object, index));
        }
        return NSArray(std::move(values));
    }

    [[nodiscard]] Value dictionary(const Object& object) const {
        std::vector<NSDictionary::Entry> entries;
        entries.reserve(object.count);
        for (std::size_t index = 0; index < object.count; ++index) {
            entries.emplace_back(*element(object, index).as<NSString>(), element(object, object.count + index));
        }
        return NSDictionary(std::move(entries));
    }

    const Tables& tables_;
    const std::size_t most_;
    std::size_t made_ = 0;
    std::vector<Known> known_;
    std::vector<Level> path_;
};

} // namespace

std::optional<Value> binaryPropertyList(std::string_view bytes) {
    const std::optional<Tables> tables = Tables::read(bytes);
    return tables.has_value() ? Walk(*tables, bytes.size()).run() : std::nullopt;
}

} // namespace qk::platform
