// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/values/unicode/Support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace qk::unicode::testing {
namespace {

constexpr std::size_t kMaxLength = 700;
constexpr std::size_t kMaxShort = 19;
constexpr std::size_t kMaxInPieces = 100; // a kernel may take a text of less than a block or two by parts of 16 bytes
constexpr std::array kScripts{Script::ascii, Script::latin, Script::cjk, Script::emoji, Script::mixed};

/// Each test runs once for each kernel that this processor has.
class EveryKernel : public ::testing::TestWithParam<const Kernels*> {
protected:
    void SetUp() override { RecordProperty("seed", std::to_string(seed())); }

    const Kernels& kernel() const { return *GetParam(); }

    void compareUTF8(std::string_view text) {
        SCOPED_TRACE("QK_SEED=" + std::to_string(seed()));
        for (const Fenced::Edge edge : {Fenced::Edge::end, Fenced::Edge::start}) {
            const std::string_view in = in_.hold(text, edge);
            const auto want = run(kScalarKernels.utf8ToUTF16, in, in.size(), want_);
            const auto have = run(kernel().utf8ToUTF16, in, in.size(), have_, edge);
            ASSERT_EQ(want, have);
            const Progress counted = kernel().utf16LengthOfUTF8(in.data(), in.size());
            ASSERT_EQ(counted.read, want.read);
            ASSERT_EQ(counted.written, want.text.size());
            if (want.read == in.size()) {
                char16_t* const exact = have_.room<char16_t>(want.text.size(), edge);
                ASSERT_EQ(kernel().validUTF8ToUTF16(in.data(), in.size(), exact), want.text.size());
                ASSERT_EQ(std::u16string_view(exact, want.text.size()), want.text);
            }
            ASSERT_EQ(kernel().isASCII(in.data(), in.size()), kScalarKernels.isASCII(in.data(), in.size()));
        }
    }

    void compareUTF16(std::u16string_view text) {
        SCOPED_TRACE("QK_SEED=" + std::to_string(seed()));
        for (const Fenced::Edge edge : {Fenced::Edge::end, Fenced::Edge::start}) {
            const std::u16string_view in = in_.hold(text, edge);
            const auto want8 = run(kScalarKernels.utf16ToUTF8, in, 3 * in.size(), want_);
            ASSERT_EQ(want8, run(kernel().utf16ToUTF8, in, 3 * in.size(), have_, edge));
            const Progress counted8 = kernel().utf8LengthOfUTF16(in.data(), in.size());
            ASSERT_EQ(counted8.read, want8.read);
            ASSERT_EQ(counted8.written, want8.text.size());
            const auto want32 = run(kScalarKernels.utf16ToUTF32, in, in.size(), want_);
            ASSERT_EQ(want32, run(kernel().utf16ToUTF32, in, in.size(), have_, edge));
            const Progress counted32 = kernel().utf32LengthOfUTF16(in.data(), in.size());
            ASSERT_EQ(counted32.read, want32.read);
            ASSERT_EQ(counted32.written, want32.text.size());
            const std::size_t block = std::min<std::size_t>(64, in.size());
            ASSERT_EQ(kernel().unplain(in.data(), block), kScalarKernels.unplain(in.data(), block));
            for (const char16_t limit : {u'\x80', u'\u0300', u'\uE000'}) {
                ASSERT_EQ(kernel().prefixBelow(in.data(), in.size(), limit),
                          kScalarKernels.prefixBelow(in.data(), in.size(), limit));
            }
        }
    }

    void compareUTF32(std::u32string_view text) {
        SCOPED_TRACE("QK_SEED=" + std::to_string(seed()));
        for (const Fenced::Edge edge : {Fenced::Edge::end, Fenced::Edge::start}) {
            const std::u32string_view in = in_.hold(text, edge);
            const auto want = run(kScalarKernels.utf32ToUTF16, in, 2 * in.size(), want_);
            ASSERT_EQ(want, run(kernel().utf32ToUTF16, in, 2 * in.size(), have_, edge));
            const Progress counted = kernel().utf16LengthOfUTF32(in.data(), in.size());
            ASSERT_EQ(counted.read, want.read);
            ASSERT_EQ(counted.written, want.text.size());
        }
    }

    std::size_t anyLength() { return std::uniform_int_distribution<std::size_t>{0, kMaxLength / 4}(random_); }

    /// Runs of characters that have one length in UTF-8.
    std::u32string anyRuns() {
        constexpr std::array<char32_t, 5> kFirst{0, 0x80, 0x800, 0xE000, 0x10000};
        constexpr std::array<char32_t, 5> kLast{0x7F, 0x7FF, 0xD7FF, 0xFFFF, 0x10FFFF};
        std::u32string text;
        for (std::size_t runs = 1 + anyIndex(4); runs > 0; --runs) {
            const std::size_t kind = anyIndex(kFirst.size());
            for (std::size_t left = anyIndex(anyIndex(2) == 0 ? 20 : 80); left > 0; --left) {
                text += static_cast<char32_t>(kFirst[kind] + anyIndex(kLast[kind] - kFirst[kind] + 1));
            }
        }
        return text;
    }

    /// Of the conversion to UTF-16, where that takes too many texts for all the others.
    void compareResults(std::string_view text) {
        const Progress want = kScalarKernels.utf8ToUTF16(text.data(), text.size(), wanted_.data());
        const Progress have = kernel().utf8ToUTF16(text.data(), text.size(), had_.data());
        ASSERT_EQ(want.read, have.read);
        ASSERT_EQ(std::u16string_view(wanted_.data(), want.written), std::u16string_view(had_.data(), have.written));
    }

    /// A text that a kernel may take a way of its own for, of units from the edges of their classes.
    template <typename Char, std::size_t Count>
    std::basic_string<Char> anyShortText(const std::array<Char, Count>& edges) {
        std::basic_string<Char> text(std::uniform_int_distribution<std::size_t>{0, kMaxShort}(random_), Char{});
        for (Char& unit : text) {
            unit = edges[anyIndex(Count)];
        }
        return text;
    }

    std::size_t anyIndex(std::size_t size) { return std::uniform_int_distribution<std::size_t>{0, size - 1}(random_); }

    std::mt19937_64 random_{seed()};
    std::u16string wanted_ = std::u16string(128, u'\0');
    std::u16string had_ = std::u16string(128, u'\0');

private:
    Fenced in_{kMaxLength * 8};
    Fenced want_{kMaxLength * 8};
    Fenced have_{kMaxLength * 8};
};

TEST_P(EveryKernel, EmptyTextIsWellFormedAndEmpty) {
    compareUTF8({});
    compareUTF16({});
    compareUTF32({});
    EXPECT_EQ(kernel().utf8ToUTF16(nullptr, 0, nullptr).written, 0U);
    EXPECT_EQ(kernel().utf16ToUTF8(nullptr, 0, nullptr).written, 0U);
    EXPECT_EQ(kernel().utf32ToUTF16(nullptr, 0, nullptr).written, 0U);
}

TEST_P(EveryKernel, ConvertsWellFormedTextAsThePlainEncodersDo) {
    for (int round = 0; round < 300; ++round) {
        for (const Script script : kScripts) {
            const std::u32string text = anyText(script, anyLength(), random_);
            const std::string utf8 = toUTF8(text);
            const std::u16string utf16 = toUTF16(text);
            ASSERT_NO_FATAL_FAILURE(compareUTF8(utf8));
            ASSERT_NO_FATAL_FAILURE(compareUTF16(utf16));
            ASSERT_NO_FATAL_FAILURE(compareUTF32(text));
            std::u16string decoded(utf8.size(), u'\0');
            decoded.resize(kernel().utf8ToUTF16(utf8.data(), utf8.size(), decoded.data()).written);
            ASSERT_EQ(decoded, utf16);
            std::string encoded(3 * utf16.size(), '\0');
            encoded.resize(kernel().utf16ToUTF8(utf16.data(), utf16.size(), encoded.data()).written);
            ASSERT_EQ(encoded, utf8);
        }
    }
}

TEST_P(EveryKernel, FindsTheEndOfPlainTextAndItsNextStart) {
    for (int round = 0; round < 300; ++round) {
        for (const Script script : kScripts) {
            const std::u32string other = anyText(script, anyIndex(4), random_);
            const std::u32string text =
                anyText(Script::ascii, 2 * anyLength(), random_) + other + anyText(Script::ascii, anyLength(), random_);
            ASSERT_NO_FATAL_FAILURE(compareUTF8(toUTF8(text)));
            ASSERT_NO_FATAL_FAILURE(compareUTF16(toUTF16(text)));
        }
    }
}

TEST_P(EveryKernel, StopsAtTheSameBrokenByte) {
    for (int round = 0; round < 300; ++round) {
        for (const Script script : kScripts) {
            std::string text = toUTF8(anyText(script, 1 + anyLength(), random_));
            text[anyIndex(text.size())] = static_cast<char>(random_());
            ASSERT_NO_FATAL_FAILURE(compareUTF8(text));
            text.erase(anyIndex(text.size()), 1);
            ASSERT_NO_FATAL_FAILURE(compareUTF8(text));
        }
    }
}

TEST_P(EveryKernel, StopsAtTheSameLoneSurrogate) {
    for (int round = 0; round < 300; ++round) {
        for (const Script script : kScripts) {
            std::u16string text = toUTF16(anyText(script, 1 + anyLength(), random_));
            text[anyIndex(text.size())] = static_cast<char16_t>(0xD800 + (random_() & 0x7FFU));
            ASSERT_NO_FATAL_FAILURE(compareUTF16(text));
            text.erase(anyIndex(text.size()), 1);
            ASSERT_NO_FATAL_FAILURE(compareUTF16(text));
        }
    }
}

TEST_P(EveryKernel, StopsAtTheSameValueThatIsNoCharacter) {
    constexpr std::array<char32_t, 6> kWrong{0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, 0xFFFFFFFF};
    for (int round = 0; round < 300; ++round) {
        for (const Script script : kScripts) {
            std::u32string text = anyText(script, 1 + anyLength(), random_);
            text[anyIndex(text.size())] = kWrong[anyIndex(kWrong.size())];
            ASSERT_NO_FATAL_FAILURE(compareUTF32(text));
        }
    }
}

TEST_P(EveryKernel, AgreesOnArbitraryBytes) {
    for (int round = 0; round < 2000; ++round) {
        std::string text(anyLength(), '\0');
        const auto mask = static_cast<unsigned char>(round % 2 == 0 ? 0xFF : 0xBF);
        for (char& byte : text) {
            byte = static_cast<char>(random_() & mask);
        }
        ASSERT_NO_FATAL_FAILURE(compareUTF8(text));
    }
}

TEST_P(EveryKernel, ConvertsShortTextOfEveryLength) {
    for (std::size_t length = 0; length <= kMaxInPieces; ++length) {
        for (const Script script : kScripts) {
            for (int round = length <= kMaxShort ? 100 : 10; round > 0; --round) {
                const std::u32string text = anyText(script, length, random_);
                ASSERT_NO_FATAL_FAILURE(compareUTF8(toUTF8(text)));
                ASSERT_NO_FATAL_FAILURE(compareUTF16(toUTF16(text)));
                ASSERT_NO_FATAL_FAILURE(compareUTF32(text));
            }
        }
    }
}

TEST_P(EveryKernel, StopsAtOneBrokenByteInShortText) {
    for (std::size_t length = 1; length <= kMaxInPieces; ++length) {
        for (const Script script : kScripts) {
            for (int round = 0; round < 10; ++round) {
                std::string text = toUTF8(anyText(script, length, random_));
                text[anyIndex(text.size())] = static_cast<char>(random_());
                ASSERT_NO_FATAL_FAILURE(compareUTF8(text));
                text.resize(anyIndex(text.size()));
                ASSERT_NO_FATAL_FAILURE(compareUTF8(text));
            }
        }
    }
}

TEST_P(EveryKernel, AgreesOnShortTextFromTheEdgesOfTheClasses) {
    constexpr std::array kBytes{'\x00', '\x41', '\x7F', '\x80', '\x8F', '\x90', '\x9F', '\xA0', '\xBF', '\xC0', '\xC1',
                                '\xC2', '\xDF', '\xE0', '\xEC', '\xED', '\xEF', '\xF0', '\xF3', '\xF4', '\xF5', '\xFF'};
    constexpr std::array<char16_t, 12> kUnits{0x00,   0x7F,   0x80,   0x7FF,  0x800,  0xD7FF,
                                              0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFFFF};
    constexpr std::array<char32_t, 10> kValues{0x41,   0xD7FF,  0xD800,   0xDFFF,   0xE000,
                                               0xFFFF, 0x10000, 0x10FFFF, 0x110000, 0xFFFFFFFF};
    for (int round = 0; round < 20000; ++round) {
        ASSERT_NO_FATAL_FAILURE(compareUTF8(anyShortText(kBytes)));
        ASSERT_NO_FATAL_FAILURE(compareUTF16(anyShortText(kUnits)));
        ASSERT_NO_FATAL_FAILURE(compareUTF32(anyShortText(kValues)));
    }
}

TEST_P(EveryKernel, AgreesOnEverySequenceOfThreeBytesAndOneMore) {
    // What decides whether a sequence is well-formed is in its first two bytes; the others are continuations or not.
    std::string text(8, 'a');
    for (unsigned lead = 0x80; lead < 0x100; ++lead) {
        for (unsigned second = 0x00; second < 0x100; ++second) {
            for (const char third : {'a', '\x80', '\xBF', '\xC3'}) {
                for (const char fourth : {'a', '\x80', '\xBF', '\xC3'}) {
                    text.replace(2, 4, {static_cast<char>(lead), static_cast<char>(second), third, fourth});
                    ASSERT_NO_FATAL_FAILURE(compareResults(text));
                }
            }
        }
    }
}

TEST_P(EveryKernel, FindsTheEndOfARunAndWhatIsWrongInIt) {
    for (int round = 0; round < 1000; ++round) {
        const std::u32string text = anyRuns() + U'x';
        std::string utf8 = toUTF8(text);
        std::u16string utf16 = toUTF16(text);
        ASSERT_NO_FATAL_FAILURE(compareUTF8(utf8));
        ASSERT_NO_FATAL_FAILURE(compareUTF16(utf16));
        utf8[anyIndex(utf8.size())] = static_cast<char>(random_());
        ASSERT_NO_FATAL_FAILURE(compareUTF8(utf8));
        utf8.erase(anyIndex(utf8.size()));
        ASSERT_NO_FATAL_FAILURE(compareUTF8(utf8));
        utf16[anyIndex(utf16.size())] = static_cast<char16_t>(0xD800 + (random_() & 0x7FFU));
        ASSERT_NO_FATAL_FAILURE(compareUTF16(utf16));
        utf16.erase(anyIndex(utf16.size()));
        ASSERT_NO_FATAL_FAILURE(compareUTF16(utf16));
    }
}

TEST_P(EveryKernel, AgreesOnEveryFirstAndSecondByteInARun) {
    for (const char32_t character : {U'\u6F22', U'\U0001F600'}) {
        const std::string run = toUTF8(std::u32string(24, character));
        const std::size_t place = run.size() / 24 * 9;
        for (unsigned lead = 0x80; lead < 0x100; ++lead) {
            for (unsigned second = 0x00; second < 0x100; ++second) {
                std::string text = run;
                text.replace(place, 2, {static_cast<char>(lead), static_cast<char>(second)});
                ASSERT_NO_FATAL_FAILURE(compareResults(text));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Unicode, EveryKernel,
                         ::testing::ValuesIn(supportedKernels().begin(), supportedKernels().end()),
                         [](const auto& kernel) {
                             std::string name = kernel.param->name;
                             std::erase(name, '.');
                             return name;
                         });

} // namespace
} // namespace qk::unicode::testing
