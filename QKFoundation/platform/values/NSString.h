// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qk {

/// The storage that an `NSString` and a `CFStringRef` share: immutable UTF-16 units and an atomic count of references.
/// One block of memory, with the units right behind this header.
///
/// A string that borrows a caller's UTF-32 buffer has null `units` until somebody asks for them; they are then
/// converted once, into a block of their own. A host uses the functions below; this stands here so that they cost no
/// call.
struct CFStringStorage {
    constexpr CFStringStorage(std::size_t count, const char16_t* content, std::size_t contentLength) noexcept
        : references(count), units(content), length(contentLength) {}

    mutable std::atomic<std::size_t> references;
    mutable std::atomic<std::size_t> hash{0}; // 0 until it is first asked for
    mutable std::atomic<const char16_t*> units;
    std::size_t length;
};

/// A reference to a string's storage. It owns nothing by itself: `CFRetain` and `CFRelease` count.
using CFStringRef = const CFStringStorage*;

namespace internal {

/// The count of a storage that is never freed, and that nobody counts.
inline constexpr std::size_t kImmortal = static_cast<std::size_t>(-1);

/// The one storage of the empty string. It is there before any constructor runs and after all destructors have run.
QK_EXPORT extern const CFStringStorage kEmptyStorage;

/// Frees a storage that nobody refers to.
QK_EXPORT void destroyStorage(CFStringRef string) noexcept;

/// The units of a storage that borrows, converted now unless they have been before.
[[nodiscard]] QK_EXPORT const char16_t* convertedUnits(CFStringRef string);

} // namespace internal

/// Adds one reference to `string` (not null) and returns it. Any thread.
inline CFStringRef CFRetain(CFStringRef string) noexcept {
    if (string->references.load(std::memory_order_relaxed) != internal::kImmortal) {
        string->references.fetch_add(1, std::memory_order_relaxed);
    }
    return string;
}

/// Gives one reference to `string` (not null) back; the last one frees the storage. Any thread.
inline void CFRelease(CFStringRef string) noexcept {
    const std::size_t count = string->references.load(std::memory_order_acquire);
    if (count == internal::kImmortal) {
        return;
    }
    // Whoever holds the only reference is alone: nobody else can be adding one, and the costly subtraction is not
    // needed.
    if (count == 1 || string->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        internal::destroyStorage(string);
    }
}

/// The number of references to `string` at this moment; only a diagnosis, since other threads may count at the same
/// time. The storage of the empty string is shared by all and never freed: its count is always the largest number.
[[nodiscard]] QK_EXPORT std::size_t CFGetRetainCount(CFStringRef string) noexcept;

/// The order of two values.
enum class NSComparisonResult { NSOrderedAscending = -1, NSOrderedSame = 0, NSOrderedDescending = 1 };

/// An immutable Unicode string: UTF-16 units, any of which may be a lone surrogate.
///
/// Lengths and indexes count UTF-16 units. Equality and order are literal, unit by unit: no case folding, no
/// normalisation. Copying shares the storage and costs one atomic increment.
/// Threads: a string may be read, copied and destroyed anywhere at the same time.
class QK_EXPORT NSString {
public:
    /// The empty string. Allocates nothing.
    NSString() noexcept : storage_(&internal::kEmptyStorage) {}

    /// A copy of `units`, taken as they are.
    explicit NSString(std::u16string_view units);

    /// A literal of the program's text, which is UTF-8.
    template <std::size_t N>
    NSString(const char (&literal)[N]) // NOLINT(google-explicit-constructor): literals stand for strings everywhere
        : NSString(fromLiteral(std::string_view(literal, N - 1))) {}

    /// A buffer is not a literal: say how it is encoded with `fromUTF8`.
    template <std::size_t N>
    NSString(char (&buffer)[N]) = delete;

    NSString(const NSString& other) noexcept : storage_(CFRetain(other.storage_)) {}
    /// Leaves `other` empty.
    NSString(NSString&& other) noexcept : storage_(std::exchange(other.storage_, &internal::kEmptyStorage)) {}
    NSString& operator=(const NSString& other) noexcept {
        NSString(other).swap(*this);
        return *this;
    }
    NSString& operator=(NSString&& other) noexcept {
        NSString(std::move(other)).swap(*this);
        return *this;
    }
    ~NSString() { CFRelease(storage_); }
    void swap(NSString& other) noexcept { std::swap(storage_, other.storage_); }

    /// The string that `bytes` encode in UTF-8; nothing when they are malformed anywhere. U+0000 and U+FEFF are
    /// characters like any other.
    [[nodiscard]] static std::optional<NSString> fromUTF8(std::string_view bytes);

    /// As `fromUTF8`, with U+FFFD for every malformed byte: for texts that are only shown.
    [[nodiscard]] static NSString fromUTF8Lossy(std::string_view bytes);

    /// The string of the scalar values `elements`, 32 bits each; nothing when one of them is a surrogate or above
    /// U+10FFFF.
    [[nodiscard]] static std::optional<NSString> fromUTF32(std::wstring_view elements);

    /// As `fromUTF32`, but the string refers to `elements` instead of copying them, until its units are first asked
    /// for. The caller keeps `elements` alive and unchanged for as long as the string, or a copy of it, lives.
    [[nodiscard]] static std::optional<NSString> fromUTF32NoCopy(std::wstring_view elements);

    /// The decimal digits of `number`, with "-" in front of a negative one.
    [[nodiscard]] static NSString fromInteger(std::int64_t number);
    [[nodiscard]] static NSString fromUnsignedInteger(std::uint64_t number);

    /// A string that takes over the one reference that the caller holds on `string` (not null).
    [[nodiscard]] static NSString adopting(CFStringRef string) noexcept { return NSString(string, Adopt{}); }

    /// A string that shares `string` (not null) with its other holders.
    [[nodiscard]] static NSString sharing(CFStringRef string) noexcept { return NSString(CFRetain(string), Adopt{}); }

    /// The storage, without a reference of its own: it lives as long as this string or another holder of it.
    [[nodiscard]] CFStringRef storage() const noexcept { return storage_; }

    /// The number of UTF-16 units.
    [[nodiscard]] std::size_t length() const noexcept { return storage_->length; }
    [[nodiscard]] bool isEmpty() const noexcept { return length() == 0; }

    /// All units. Valid as long as this string's storage lives.
    [[nodiscard]] std::u16string_view units() const {
        const char16_t* units = storage_->units.load(std::memory_order_acquire);
        return {units != nullptr ? units : internal::convertedUnits(storage_), storage_->length};
    }

    /// The unit at `index`, which is below `length`.
    [[nodiscard]] char16_t characterAtIndex(std::size_t index) const { return units()[index]; }

    /// The UTF-8 form; nothing when the string holds a lone surrogate, which has none.
    [[nodiscard]] std::optional<std::string> utf8() const;

    /// The UTF-8 form with `loss` in the place of every lone surrogate.
    [[nodiscard]] std::string utf8Lossy(char loss = '?') const;

    /// The UTF-32 form; nothing when the string holds a lone surrogate, which has none.
    [[nodiscard]] std::optional<std::wstring> utf32() const;

    /// The UTF-32 form with `loss` in the place of every lone surrogate.
    [[nodiscard]] std::wstring utf32Lossy(wchar_t loss = L'?') const;

    /// Canonical composition (NFC). A string that is composed already is returned as it is, sharing its storage.
    [[nodiscard]] NSString precomposedStringWithCanonicalMapping() const;

    /// `compare:`. The literal order of the units.
    [[nodiscard]] NSComparisonResult compare(const NSString& other) const;

    /// Position of the first `text` at or after `from`; nothing when there is none. The empty text is never found.
    [[nodiscard]] std::optional<std::size_t> find(std::u16string_view text, std::size_t from = 0) const;

    /// Position of the last `text`; nothing when there is none. The empty text is never found.
    [[nodiscard]] std::optional<std::size_t> findLast(std::u16string_view text) const;

    [[nodiscard]] bool contains(std::u16string_view text) const { return find(text).has_value(); }
    [[nodiscard]] bool hasPrefix(const NSString& prefix) const { return units().starts_with(prefix.units()); }
    [[nodiscard]] bool hasSuffix(const NSString& suffix) const { return units().ends_with(suffix.units()); }

    /// The units from `index` to the end; empty when `index` lies at or behind the end.
    [[nodiscard]] NSString substringFromIndex(std::size_t index) const;

    /// The first `index` units; the whole string when it has no more.
    [[nodiscard]] NSString substringToIndex(std::size_t index) const;

    /// At most `count` units from `index` on; empty when `index` lies at or behind the end.
    [[nodiscard]] NSString substring(std::size_t index, std::size_t count) const;

    /// `componentsSeparatedByString:`. The pieces between the occurrences of `separator`, empty ones included, in
    /// order; the string itself when there is no occurrence or `separator` is empty.
    [[nodiscard]] std::vector<NSString> componentsSeparatedByString(const NSString& separator) const;

    /// `stringByReplacingOccurrencesOfString:withString:`. One pass from the left; occurrences do not overlap.
    [[nodiscard]] NSString stringByReplacingOccurrencesOfString(const NSString& target,
                                                                const NSString& replacement) const;

    /// `stringByTrimmingCharactersInSet:` with the white-space set: tab and the space separators (category Zs); no line
    /// ends.
    [[nodiscard]] NSString stringByTrimmingWhitespace() const;

    /// `integerValue`. White space and line ends are skipped, then one sign, then ASCII digits up to the first other
    /// unit; 0 without digits, which must follow the sign at once. Values that 64 bits cannot hold stop at the limits.
    [[nodiscard]] std::int64_t integerValue() const;

    /// `intValue`. As `integerValue`, stopping at the limits of 32 bits.
    [[nodiscard]] std::int32_t intValue() const;

    /// `doubleValue`. White space and line ends are skipped, then the longest decimal number (sign, digits, ".",
    /// exponent); 0 without one. A number that is too large gives infinity, one that is too small 0, of its sign.
    [[nodiscard]] double doubleValue() const;

    /// `boolValue`. White space and line ends are skipped; then Y, y, T or t, or an optional sign, zeros and a digit
    /// from 1 to 9, is true.
    [[nodiscard]] bool boolValue() const;

    // Paths. Runs of "/" count as one; an extension is never empty, and a leading dot alone does not begin one.

    /// `lastPathComponent`. "/a/b//" gives "b", "/" gives "/", "" gives "".
    [[nodiscard]] NSString lastPathComponent() const;
    /// `pathExtension`. Without the dot; "" when there is none.
    [[nodiscard]] NSString pathExtension() const;
    /// `stringByDeletingLastPathComponent`. "/a/b" gives "/a", "/a" and "/" give "/", "a" gives "".
    [[nodiscard]] NSString stringByDeletingLastPathComponent() const;
    /// `stringByDeletingPathExtension`. A trailing "/" goes as well.
    [[nodiscard]] NSString stringByDeletingPathExtension() const;
    /// `stringByAppendingPathComponent:`. Runs of "/" become one and a trailing "/" goes.
    [[nodiscard]] NSString stringByAppendingPathComponent(const NSString& component) const;
    /// `stringByAppendingPathExtension:`. A trailing "/" goes first. Nothing for what cannot take an extension: "",
    /// "/", and "~x" without any "/".
    [[nodiscard]] std::optional<NSString> stringByAppendingPathExtension(const NSString& extension) const;
    /// `pathComponents`. "/home/" gives "/", "home", "/".
    [[nodiscard]] std::vector<NSString> pathComponents() const;
    /// `isAbsolutePath`. Whether the first unit is "/".
    [[nodiscard]] bool isAbsolutePath() const { return units().starts_with(u'/'); }

    /// The hash of the units: equal strings have equal hashes.
    [[nodiscard]] std::size_t hash() const;

    [[nodiscard]] friend bool operator==(const NSString& left, const NSString& right) {
        return left.storage_ == right.storage_ || (left.length() == right.length() && left.hasUnitsOf(right));
    }
    QK_EXPORT friend std::strong_ordering operator<=>(const NSString& left, const NSString& right);
    [[nodiscard]] friend NSString operator+(const NSString& left, const NSString& right) {
        return concatenated({left.units(), right.units()});
    }

    /// One text of all `pieces`, in their order.
    [[nodiscard]] static NSString concatenated(std::initializer_list<std::u16string_view> pieces);

private:
    struct Adopt {};
    NSString(CFStringRef storage, Adopt /*adopt*/) noexcept : storage_(storage) {}
    [[nodiscard]] static NSString fromLiteral(std::string_view utf8);
    [[nodiscard]] bool hasUnitsOf(const NSString& other) const; // which is as long

    CFStringRef storage_; // never null
};

/// A string under construction: appended to in place, then handed on as an `NSString`.
/// Threads: one at a time.
class QK_EXPORT NSMutableString {
public:
    NSMutableString() = default;

    NSMutableString& append(const NSString& text) { return append(text.units()); }
    NSMutableString& append(std::u16string_view units) {
        units_.append(units);
        return *this;
    }
    NSMutableString& append(char16_t unit) {
        units_.push_back(unit);
        return *this;
    }

    [[nodiscard]] std::size_t length() const noexcept { return units_.size(); }
    [[nodiscard]] std::u16string_view units() const noexcept { return units_; }

    /// A string of what has been appended so far.
    [[nodiscard]] NSString copy() const { return NSString(units_); }

private:
    std::u16string units_;
};

} // namespace qk

template <>
struct std::hash<qk::NSString> {
    [[nodiscard]] std::size_t operator()(const qk::NSString& string) const { return string.hash(); }
};
