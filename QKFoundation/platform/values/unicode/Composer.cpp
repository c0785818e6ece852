// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Composer.h"

#include "QKFoundation/platform/values/unicode/NormalizationData.h"
#include "QKFoundation/platform/values/unicode/UTF16.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

namespace qk::unicode {
namespace {

constexpr std::uint32_t kCharacterMask = 0xFFFFFF;
constexpr unsigned kClassShift = 24;

std::uint32_t classOf(std::uint32_t entry) {
    return entry >> kClassShift;
}

} // namespace

/// Where a segment is being read and written. Marks behind the starter come in order as long as nothing else is found.
struct Composer::Segment {
    std::size_t at;       // the next character of the input
    char32_t starter = 0; // waits to be written: the next mark may compose with it
    bool hasStarter = false;
    std::size_t marks = 0;     // where in the output the marks behind the starter begin
    std::uint8_t lastKept = 0; // class of the last of those marks
    std::uint8_t lastSeen = 0; // class of the last mark, composed or not
};

std::size_t Composer::appendSegment(std::size_t start, std::u16string& out) {
    const std::size_t outStart = out.size();
    Segment segment{.at = start};
    if (appendOrdered(segment, out)) {
        return segment.at;
    }
    out.resize(outStart);
    return appendAny(start, out);
}

/// The usual segment needs neither decomposition nor sorting: a starter and marks in order. False for any other, with
/// something written.
bool Composer::appendOrdered(Segment& segment, std::u16string& out) {
    std::array<char32_t, 8> kept{};
    std::size_t keptCount = 0;
    const auto flush = [&] {
        if (segment.hasStarter) {
            appendCharacter(segment.starter, out);
        }
        for (std::size_t i = 0; i < keptCount; ++i) {
            appendCharacter(kept[i], out);
        }
        keptCount = 0;
    };
    for (bool isFirst = true; segment.at < in_.size(); isFirst = false) {
        const Character next = characterAt(in_, segment.at);
        const Record& record = recordOf(next.value);
        if (!isFirst && record.isBoundary()) {
            break;
        }
        if (record.check() == QuickCheck::no ||
            record.combiningClass < segment.lastSeen * (record.combiningClass != 0)) {
            return false;
        }
        segment.at += next.length;
        if (segment.hasStarter && record.check() == QuickCheck::maybe &&
            (keptCount == 0 || segment.lastKept < record.combiningClass)) {
            if (const auto composed = compose(segment.starter, next.value)) {
                segment.starter = *composed;
                segment.lastSeen = record.combiningClass;
                continue;
            }
        }
        if (record.combiningClass == 0) {
            flush();
            segment.starter = next.value;
            segment.hasStarter = true;
            segment.lastSeen = record.trailingClass;
        } else if (keptCount == kept.size()) {
            return false;
        } else {
            kept[keptCount++] = next.value;
            segment.lastKept = segment.lastSeen = record.combiningClass;
        }
    }
    flush();
    return true;
}

/// Decomposes, sorts and composes all of the segment.
std::size_t Composer::appendAny(std::size_t start, std::u16string& out) {
    buffer_.clear();
    std::size_t at = start;
    while (at < in_.size()) {
        const Character next = characterAt(in_, at);
        if (at != start && recordOf(next.value).isBoundary()) {
            break;
        }
        decompose(next.value);
        at += next.length;
    }
    sortMarks();
    composeBuffer();
    for (const std::uint32_t entry : buffer_) {
        appendCharacter(entry & kCharacterMask, out);
    }
    return at;
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
