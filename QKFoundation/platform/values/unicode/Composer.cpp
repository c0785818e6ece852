// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Composer.h"

#include "QKFoundation/platform/values/unicode/FourUnits.h"
#include "QKFoundation/platform/values/unicode/NormalizationData.h"
#include "QKFoundation/platform/values/unicode/UTF16.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <span>

namespace qk::unicode {
namespace {

constexpr std::uint32_t kCharacterMask = 0xFFFFFF;
constexpr unsigned kClassShift = 24;

std::uint32_t classOf(std::uint32_t entry) {
    return entry >> kClassShift;
}

/// All characters below are boundaries, and none below `kFirstDecomposable` has a mark in it.
constexpr char32_t kFirstMark = kFirstOfMarks;
constexpr char32_t kFirstDecomposable = 0xC0;

/// Composes segments that need neither decomposition nor sorting: a starter and marks in order, as almost all are.
class OrderedSegments {
public:
    explicit OrderedSegments(std::size_t start) : segment_{start} {}

    /// Where in the input the current segment began.
    [[nodiscard]] std::size_t segment() const { return segment_; }

    /// Begins a segment at `at` with a boundary.
    void begin(std::size_t at, char32_t starter, std::uint8_t trailingClass, std::u16string& out) {
        flush();
        constexpr std::size_t kEnough = 64;
        if (length_ + kEnough > buffer_.size()) {
            out.append(buffer_.data(), length_);
            length_ = 0;
        }
        segment_ = at;
        segmentLength_ = length_;
        setStarter(starter, trailingClass);
    }

    /// Copies characters from `at` on that are complete because both they and the next are below the first mark, and
    /// composes those of ASCII that have one mark: no processor foresees where marks stand, and this loses the least.
    /// Stops at the latest when `quiet`, the characters that were copied in a row, reaches `most`, give or take a few.
    /// Returns where.
    std::size_t copySimple(std::u16string_view in, std::size_t at, unsigned most, unsigned& quiet) {
        flush();
        while (quiet < most && at + kAtOnce + 1 < in.size() && length_ + kAtOnce <= buffer_.size()) {
            const FourUnits units = fourAt(in, at);
            const std::size_t simple = unitsBeforeMark(units, fourAt(in, at + 1));
            std::memcpy(buffer_.data() + length_, &units, sizeof units);
            length_ += simple;
            at += simple;
            quiet += static_cast<unsigned>(simple);
            if (simple < kAtOnce) {
                const auto composed = compose(in[at], in[at + 1]);
                if (!composed || in[at] >= kFirstDecomposable || in[at + 2] >= kFirstMark) {
                    return at;
                }
                buffer_[length_++] = static_cast<char16_t>(*composed);
                at += 2;
                quiet = 0;
            }
        }
        while (quiet < most && at + 1 < in.size() && length_ < buffer_.size() && in[at] < kFirstMark &&
               in[at + 1] < kFirstMark) {
            buffer_[length_++] = in[at++];
            ++quiet;
        }
        return at;
    }

    /// Adds a character that is no boundary; false if the segment is of another kind.
    bool add(char32_t character, const Record& record) {
        const std::uint8_t combiningClass = record.combiningClass;
        if (record.check() == QuickCheck::no || (combiningClass != 0 && combiningClass < lastSeen_)) {
            return false;
        }
        if (hasStarter_ && record.check() == QuickCheck::maybe && (keptCount_ == 0 || lastKept_ < combiningClass)) {
            if (const auto composed = compose(starter_, character)) {
                starter_ = *composed;
                lastSeen_ = combiningClass;
                return true;
            }
        }
        constexpr std::size_t kMostAtOnce = 2 * (1 + kMostMarks);
        if (keptCount_ == kMostMarks || length_ + kMostAtOnce > buffer_.size()) {
            return false;
        }
        if (combiningClass == 0) {
            flush();
            setStarter(character, record.trailingClass);
        } else {
            kept_[keptCount_++] = character;
            lastKept_ = lastSeen_ = combiningClass;
        }
        return true;
    }

    void finish(std::u16string& out) {
        flush();
        out.append(buffer_.data(), length_);
    }

    /// Leaves the current segment out.
    void finishBeforeSegment(std::u16string& out) const { out.append(buffer_.data(), segmentLength_); }

private:
    static constexpr std::size_t kMostMarks = 8;

    void setStarter(char32_t starter, std::uint8_t trailingClass) {
        starter_ = starter;
        hasStarter_ = true;
        lastSeen_ = trailingClass;
    }

    void write(char32_t character) {
        if (character < 0x10000) {
            buffer_[length_++] = static_cast<char16_t>(character);
        } else {
            buffer_[length_++] = static_cast<char16_t>(0xD7C0U + (character >> 10U));
            buffer_[length_++] = static_cast<char16_t>(0xDC00U | (character & 0x3FFU));
        }
    }

    void flush() {
        if (hasStarter_) {
            write(starter_);
        }
        for (std::size_t i = 0; i < keptCount_; ++i) {
            write(kept_[i]);
        }
        hasStarter_ = false;
        keptCount_ = 0;
    }

    std::array<char16_t, 512> buffer_; // all before length_ is set
    std::size_t length_ = 0;
    std::size_t segment_;
    std::size_t segmentLength_ = 0;
    char32_t starter_ = 0; // waits to be written: the next mark may compose with it
    bool hasStarter_ = false;
    std::array<char32_t, kMostMarks> kept_{};
    std::size_t keptCount_ = 0;
    std::uint8_t lastKept_ = 0; // class of the last mark that is kept
    std::uint8_t lastSeen_ = 0; // class of the last mark, composed or not
};

/// The syllable whose parts begin at `at`, and how many they are; length 0 if there are none.
Character syllableAt(std::u16string_view in, std::size_t at) {
    using namespace hangul;
    const char32_t lead = in[at] - kLead;
    if (lead >= kLeads || at + 1 == in.size() || in[at + 1] - kVowel >= kVowels) {
        return {0, 0};
    }
    const char32_t open = kSyllable + (lead * kVowels + (in[at + 1] - kVowel)) * kTails;
    const char32_t tail = at + 2 < in.size() ? in[at + 2] - kTail : 0;
    const bool hasTail = tail - 1 < kTails - 1;
    return {hasTail ? open + tail : open, hasTail ? 3U : 2U};
}

} // namespace

std::size_t Composer::append(std::size_t start, Extent extent, std::u16string& out) {
    // A character that has to be looked up says more about what follows than one that is copied.
    constexpr unsigned kMostQuiet = 16;
    constexpr unsigned kPerLookup = 4;
    OrderedSegments segments{start};
    unsigned quiet = 0;
    std::size_t at = start;
    while (at < in_.size()) {
        if (extent == Extent::stretch && in_[at] < kFirstMark) {
            at = segments.copySimple(in_, at, kMostQuiet, quiet);
        }
        if (const Character syllable = syllableAt(in_, at); syllable.length != 0) {
            if (at != start && extent == Extent::segment) {
                break;
            }
            segments.begin(at, syllable.value, 0, out);
            at += syllable.length;
            quiet = 0;
            continue;
        }
        const Character next = characterAt(in_, at);
        const Record& record = recordOf(next.value < kFirstDecomposable ? 0 : next.value);
        if (next.value < kFirstMark || record.isBoundary()) {
            if (at != start && (extent == Extent::segment || (quiet += kPerLookup) > kMostQuiet)) {
                break;
            }
            segments.begin(at, next.value, record.trailingClass, out);
        } else if (segments.add(next.value, record)) {
            quiet = 0;
        } else {
            segments.finishBeforeSegment(out);
            return appendAny(segments.segment(), out);
        }
        at += next.length;
    }
    segments.finish(out);
    return at;
}

/// Decomposes, sorts and composes all of the segment.
std::size_t Composer::appendAny(std::size_t start, std::u16string& out) {
    std::size_t end = start + characterAt(in_, start).length;
    while (end < in_.size()) {
        const Character next = characterAt(in_, end);
        if (recordOf(next.value).isBoundary()) {
            break;
        }
        end += next.length;
    }
    buffer_.clear();
    buffer_.reserve(end - start);
    for (std::size_t at = start; at < end;) {
        const Character next = characterAt(in_, at);
        decompose(next.value);
        at += next.length;
    }
    sortMarks();
    composeBuffer();
    for (const std::uint32_t entry : buffer_) {
        appendCharacter(entry & kCharacterMask, out);
    }
    return end;
}

void Composer::decompose(char32_t character) {
    if (hangul::isSyllable(character)) {
        using namespace hangul;
        const char32_t index = character - kSyllable;
        buffer_.push_back(kLead + index / (kVowels * kTails));
        buffer_.push_back(kVowel + index / kTails % kVowels);
        if (index % kTails != 0) {
            buffer_.push_back(kTail + index % kTails);
        }
        return;
    }
    const Record& record = recordOf(character);
    const std::span<const std::uint32_t> parts = decompositionOf(record);
    if (parts.empty()) {
        buffer_.push_back(character | static_cast<std::uint32_t>(record.combiningClass) << kClassShift);
    } else {
        buffer_.insert(buffer_.end(), parts.begin(), parts.end());
    }
}

void Composer::sortMarks() {
    for (std::size_t at = 0; at < buffer_.size();) {
        if (classOf(buffer_[at]) == 0) {
            ++at;
            continue;
        }
        const std::size_t first = at;
        while (at < buffer_.size() && classOf(buffer_[at]) != 0) {
            ++at;
        }
        sortRun(first, at);
    }
}

/// Sorts marks by their classes and leaves equal ones in their order.
void Composer::sortRun(std::size_t first, std::size_t last) {
    constexpr std::size_t kShort = 24;
    if (last - first <= kShort) {
        for (std::size_t i = first + 1; i < last; ++i) {
            const std::uint32_t entry = buffer_[i];
            std::size_t to = i;
            for (; to > first && classOf(buffer_[to - 1]) > classOf(entry); --to) {
                buffer_[to] = buffer_[to - 1];
            }
            buffer_[to] = entry;
        }
        return;
    }
    std::array<std::size_t, 256> place{};
    for (std::size_t i = first; i < last; ++i) {
        ++place[classOf(buffer_[i])];
    }
    std::size_t before = 0;
    for (std::size_t& count : place) {
        before += count;
        count = before - count;
    }
    sorted_.resize(last - first);
    for (std::size_t i = first; i < last; ++i) {
        sorted_[place[classOf(buffer_[i])]++] = buffer_[i];
    }
    std::copy(sorted_.begin(), sorted_.end(), buffer_.begin() + static_cast<std::ptrdiff_t>(first));
}

void Composer::composeBuffer() {
    std::size_t written = 0;
    std::optional<std::size_t> starter;
    for (const std::uint32_t entry : buffer_) {
        if (starter) {
            // A mark between the two blocks when its class is not below, and a starter between them always.
            const bool isNext = written == *starter + 1;
            if (isNext || classOf(buffer_[written - 1]) < classOf(entry)) {
                if (const auto composed = compose(buffer_[*starter], entry & kCharacterMask)) {
                    buffer_[*starter] = *composed;
                    continue;
                }
            }
        }
        if (classOf(entry) == 0) {
            starter = written;
        }
        buffer_[written++] = entry;
    }
    buffer_.resize(written);
}

} // namespace qk::unicode
