// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/values/unicode/Support.h"

#include <gtest/gtest.h>

namespace qk::unicode::testing {
namespace {

using namespace std::string_literals;

struct Sequence {
    const char* what;
    std::string bytes;
    std::u16string units; // meaningless for a malformed one
};

const std::vector<Sequence>& wellFormed() {
    static const std::vector<Sequence> table{
        {"U+0000", "\0"s, u"\0"s},
        {"U+007F", "\x7F", u"\x7F"},
        {"U+0080", "\xC2\x80", u"\x80"},
        {"U+07FF", "\xDF\xBF", u"\u07FF"},
        {"U+0800", "\xE0\xA0\x80", u"\u0800"},
        {"U+0FFF", "\xE0\xBF\xBF", u"\u0FFF"},
        {"U+1000", "\xE1\x80\x80", u"\u1000"},
        {"U+CFFF", "\xEC\xBF\xBF", u"\uCFFF"},
        {"U+D000", "\xED\x80\x80", u"\uD000"},
        {"U+D7FF", "\xED\x9F\xBF", u"\uD7FF"},
        {"U+E000", "\xEE\x80\x80", u"\uE000"},
        {"U+FDD0, a noncharacter", "\xEF\xB7\x90", u"\uFDD0"},
        {"U+FEFF, the byte order mark", "\xEF\xBB\xBF", u"\uFEFF"},
        {"U+FFFD", "\xEF\xBF\xBD", u"\uFFFD"},
        {"U+FFFF, a noncharacter", "\xEF\xBF\xBF", u"\uFFFF"},
        {"U+10000", "\xF0\x90\x80\x80", u"\U00010000"},
        {"U+3FFFF", "\xF0\xBF\xBF\xBF", u"\U0003FFFF"},
        {"U+40000", "\xF1\x80\x80\x80", u"\U00040000"},
        {"U+FFFFF", "\xF3\xBF\xBF\xBF", u"\U000FFFFF"},
        {"U+100000", "\xF4\x80\x80\x80", u"\U00100000"},
        {"U+10FFFF", "\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
    };
    return table;
}

const std::vector<Sequence>& malformed() {
    static const std::vector<Sequence> table{
        {"lone continuation, the first", "\x80", {}},
        {"lone continuation, the last", "\xBF", {}},
        {"two continuations", "\x80\xBF", {}},
        {"continuation too many after two bytes", "\xC3\xA9\x80", {}},
        {"continuation too many after three bytes", "\xE4\xB8\xAD\x80", {}},
        {"continuation too many after four bytes", "\xF0\x9F\x98\x80\x80", {}},
        {"overlong U+0000 in two", "\xC0\x80", {}},
        {"overlong slash in two", "\xC0\xAF", {}},
        {"overlong U+007F in two", "\xC1\xBF", {}},
        {"overlong U+0000 in three", "\xE0\x80\x80", {}},
        {"overlong slash in three", "\xE0\x80\xAF", {}},
        {"overlong U+07FF in three", "\xE0\x9F\xBF", {}},
        {"overlong U+0000 in four", "\xF0\x80\x80\x80", {}},
        {"overlong slash in four", "\xF0\x80\x80\xAF", {}},
        {"overlong U+FFFF in four", "\xF0\x8F\xBF\xBF", {}},
        {"five bytes", "\xF8\x88\x80\x80\x80", {}},
        {"six bytes", "\xFC\x84\x80\x80\x80\x80", {}},
        {"U+D800", "\xED\xA0\x80", {}},
        {"U+DBFF", "\xED\xAF\xBF", {}},
        {"U+DC00", "\xED\xB0\x80", {}},
        {"U+DFFF", "\xED\xBF\xBF", {}},
        {"a surrogate pair in six bytes", "\xED\xA0\xBD\xED\xB8\x80", {}},
        {"U+110000", "\xF4\x90\x80\x80", {}},
        {"U+13FFFF", "\xF4\xBF\xBF\xBF", {}},
        {"U+140000", "\xF5\x80\x80\x80", {}},
        {"U+1FFFFF", "\xF7\xBF\xBF\xBF", {}},
        {"FE", "\xFE", {}},
        {"FF", "\xFF", {}},
        {"FE FE FF FF", "\xFE\xFE\xFF\xFF", {}},
        {"two leads", "\xC3\xC3\xA9", {}},
        {"three bytes, ASCII for the second", "\xE4zz", {}},
        {"three bytes, ASCII for the third", "\xE4\xB8z", {}},
        {"three bytes, a lead for the third", "\xE4\xB8\xE4\xB8\xAD", {}},
        {"four bytes, ASCII for the fourth", "\xF0\x9F\x98z", {}},
    };
    return table;
}

/// Each test runs once for each kernel that this processor has.
class UTF8Stress : public ::testing::TestWithParam<const Kernels*> {
protected:
    /// Decodes `bytes` at each place of a text that is longer than two blocks, among characters of each length, and at
    /// the end of memory. `check` gets what stood in front, the outcome, and the position of `bytes`.
    template <typename Check>
    void everywhere(const std::string& bytes, Check check) {
        for (const std::u32string_view filling : {U"a", U"\u00E9", U"\u4E2D", U"\U0001F600"}) {
            for (std::size_t before = 0; before <= 132; ++before) {
                for (const std::size_t after : {std::size_t{0}, std::size_t{1}, std::size_t{90}}) {
                    const std::size_t each = toUTF8(filling).size();
                    const std::u32string front =
                        std::u32string(before / each, filling[0]) + std::u32string(before % each, U'.');
                    const std::u32string back(after, filling[0]);
                    const std::string text = toUTF8(front) + bytes + toUTF8(back);
                    const std::string_view in = in_.hold<char>(text, Fenced::Edge::end);
                    const auto outcome = run(GetParam()->utf8ToUTF16, in, in.size(), out_);
                    const Progress counted = GetParam()->utf16LengthOfUTF8(in.data(), in.size());
                    ASSERT_EQ(counted.read, outcome.read);
                    ASSERT_EQ(counted.written, outcome.text.size());
                    ASSERT_NO_FATAL_FAILURE(check(front, back, outcome, in.size()));
                }
            }
        }
    }

private:
    Fenced in_{4096};
    Fenced out_{8192};
};

TEST_P(UTF8Stress, WellFormedSequencesAreDecodedAnywhere) {
    for (const Sequence& sequence : wellFormed()) {
        SCOPED_TRACE(sequence.what);
        ASSERT_NO_FATAL_FAILURE(everywhere(sequence.bytes, [&](const std::u32string& front, const std::u32string& back,
                                                               const auto& outcome, std::size_t size) {
            ASSERT_EQ(outcome.read, size);
            ASSERT_EQ(outcome.text, toUTF16(front) + sequence.units + toUTF16(back));
        }));
    }
}

TEST_P(UTF8Stress, MalformedSequencesAreFoundAnywhere) {
    for (const Sequence& sequence : malformed()) {
        SCOPED_TRACE(sequence.what);
        ASSERT_NO_FATAL_FAILURE(
            everywhere(sequence.bytes, [&](const std::u32string&, const std::u32string&, const auto& outcome,
                                           std::size_t size) { ASSERT_LT(outcome.read, size); }));
    }
}

TEST_P(UTF8Stress, CutSequencesAreFoundAnywhere) {
    for (const Sequence& sequence : wellFormed()) {
        SCOPED_TRACE(sequence.what);
        for (std::size_t kept = 1; kept < sequence.bytes.size(); ++kept) {
            ASSERT_NO_FATAL_FAILURE(
                everywhere(sequence.bytes.substr(0, kept),
                           [&](const std::u32string& front, const std::u32string&, const auto& outcome, std::size_t) {
                               ASSERT_EQ(outcome.read, toUTF8(front).size());
                               ASSERT_EQ(outcome.text, toUTF16(front));
                           }));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Unicode, UTF8Stress, ::testing::ValuesIn(supportedKernels().begin(), supportedKernels().end()),
                         [](const auto& kernel) {
                             std::string name = kernel.param->name;
                             std::erase(name, '.');
                             return name;
                         });

} // namespace
} // namespace qk::unicode::testing
