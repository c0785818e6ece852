// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace qk::platform {

/// The number of at most eight bytes, the highest one first, as a binary property list has them all.
[[nodiscard]] std::uint64_t bigEndian(std::string_view bytes);

/// An object of a binary property list.
struct BinaryPropertyListObject {
    /// The upper half of an object's first byte.
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

    Kind kind = Kind::Constant;
    unsigned lower = 0;       ///< the other half
    std::size_t count = 0;    ///< of what it has: bytes, units, values or pairs
    std::string_view content; ///< what it counts
};

/// The tables of a binary property list. Threads: may be read anywhere at the same time.
class BinaryPropertyListTables {
public:
    using Object = BinaryPropertyListObject;

    /// Those of `bytes`, which they refer to; nothing when header and trailer are none or lead out of the bytes.
    [[nodiscard]] static std::optional<BinaryPropertyListTables> read(std::string_view bytes);

    [[nodiscard]] std::size_t root() const { return root_; }
    [[nodiscard]] std::size_t count() const { return objects_; }

    /// The object of this number, which is below `count`. Nothing when it lies outside of the bytes, or is of no kind
    /// that property lists have.
    [[nodiscard]] std::optional<Object> object(std::size_t number) const;

    /// The number that stands at `index` in the content of an array or a dictionary.
    [[nodiscard]] std::size_t reference(const Object& object, std::size_t index) const {
        return bigEndian(object.content.substr(index * referenceSize_, referenceSize_));
    }

private:
    [[nodiscard]] std::size_t sizeOfOne(Object& object) const;

    std::string_view bytes_; // without the trailer
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t offsets_ = 0;
};

} // namespace qk::platform
