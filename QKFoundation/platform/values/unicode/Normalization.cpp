// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Normalization.h"

#include "QKFoundation/platform/values/unicode/Composer.h"
#include "QKFoundation/platform/values/unicode/Kernels.h"
#include "QKFoundation/platform/values/unicode/NormalizationData.h"
#include "QKFoundation/platform/values/unicode/UTF16.h"

#include <algorithm>
#include <bit>
#include <optional>

namespace qk::unicode {
namespace {

/// Finds the units that only a table can judge, by blocks of 64.
class UnplainUnits {
public:
    explicit UnplainUnits(std::u16string_view in) : in_{in}, kernels_{kernels()} {}

    /// The first at or behind `from`, or the text's length. Calls must not go back.
    std::size_t next(std::size_t from) {
        for (;;) {
            if (from >= block_ + blockLength_) {
                if (from >= in_.size()) {
                    return in_.size();
                }
                load(from);
            }
            const std::uint64_t left = mask_ >> (from - block_);
            if (left != 0) {
                return from + static_cast<std::size_t>(std::countr_zero(left));
            }
            from = block_ + blockLength_;
        }
    }

private:
    void load(std::size_t from) {
        block_ = from;
        blockLength_ = std::min<std::size_t>(64, in_.size() - from);
        mask_ = kernels_.unplain(in_.data() + block_, blockLength_);
    }

    std::u16string_view in_;
    const Kernels& kernels_;
    std::size_t block_ = 0;
    std::size_t blockLength_ = 0;
    std::uint64_t mask_ = 0;
};

/// Walks over the text and stops wherever it may not be in form C.
class Doubts {
public:
    explicit Doubts(std::u16string_view in) : in_{in}, unplain_{in} {}

    /// The start of the first segment at or behind `from`, a boundary, that may have to be composed.
    std::optional<std::size_t> next(std::size_t from) {
        std::size_t boundary = from;
        std::size_t markEnd = from;
        unsigned lastClass = 0;
        for (std::size_t at = unplain_.next(from); at < in_.size(); at = unplain_.next(at)) {
            const Character character = characterAt(in_, at);
            const Record& record = recordOf(character.value);
            if (record.isBoundary()) {
                boundary = at;
                lastClass = 0;
            } else {
                if (at != markEnd) {
                    boundary = startOfCharacterBefore(at);
                    lastClass = 0;
                }
                if (record.check() != QuickCheck::yes || record.combiningClass < lastClass) {
                    return boundary;
                }
                lastClass = record.combiningClass;
            }
            at += character.length;
            markEnd = at;
        }
        return std::nullopt;
    }

private:
    /// `at` is behind a plain unit.
    [[nodiscard]] std::size_t startOfCharacterBefore(std::size_t at) const {
        const bool isPair = at >= 2 && characterAt(in_, at - 2).length == 2;
        return at - (isPair ? 2 : 1);
    }

    std::u16string_view in_;
    UnplainUnits unplain_;
};

/// No character below is changed by composition, and none composes with the one before it.
constexpr char16_t kFirstMark = 0x300;

/// Where to begin with the table, given that all units in front of `at` are below `kFirstMark`.
std::size_t boundaryBefore(std::size_t at) {
    return at == 0 ? 0 : at - 1;
}

} // namespace

bool isNFC(std::u16string_view in) {
    const std::size_t simple = kernels().prefixBelow(in.data(), in.size(), kFirstMark);
    if (simple == in.size()) {
        return true;
    }
    const std::u16string_view rest = in.substr(boundaryBefore(simple));
    Doubts doubts{rest};
    Composer composer{rest};
    std::u16string composed;
    std::size_t at = 0;
    while (const auto start = doubts.next(at)) {
        composed.clear();
        at = composer.append(*start, Composer::Extent::segment, composed);
        if (composed != rest.substr(*start, at - *start)) {
            return false;
        }
    }
    return true;
}

void appendNFC(std::u16string_view in, std::u16string& out) {
    out.reserve(out.size() + in.size());
    Doubts doubts{in};
    Composer composer{in};
    std::size_t copied = 0;
    std::size_t from = 0;
    if (!in.empty() && in.front() < kFirstMark) {
        from = boundaryBefore(kernels().prefixBelow(in.data(), in.size(), kFirstMark));
    }
    while (const auto start = doubts.next(from)) {
        out.append(in, copied, *start - copied);
        copied = from = composer.append(*start, Composer::Extent::stretch, out);
    }
    out.append(in, copied);
}

} // namespace qk::unicode
