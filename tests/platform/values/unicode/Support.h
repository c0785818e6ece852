// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Kernels.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace qk::unicode::testing {

/// A text between two pages that cannot be touched: at the very end of its own memory, or at the very start.
class Fenced {
public:
    enum class Edge { end, start };

    explicit Fenced(std::size_t maxBytes) : page_{static_cast<std::size_t>(sysconf(_SC_PAGESIZE))} {
        bytes_ = (maxBytes + page_ - 1) / page_ * page_ + page_;
        void* const memory = mmap(nullptr, bytes_ + 2 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) {
            std::abort();
        }
        base_ = static_cast<char*>(memory);
        if (mprotect(base_ + page_, bytes_, PROT_READ | PROT_WRITE) != 0) {
            std::abort();
        }
    }
    ~Fenced() { munmap(base_, bytes_ + 2 * page_); }
    Fenced(const Fenced&) = delete;
    Fenced& operator=(const Fenced&) = delete;

    template <typename Char>
    Char* room(std::size_t count, Edge edge) {
        char* const first = base_ + page_;
        char* const place = edge == Edge::start ? first : first + bytes_ - count * sizeof(Char);
        return reinterpret_cast<Char*>(place);
    }

    template <typename Char>
    std::basic_string_view<Char> hold(std::basic_string_view<Char> text, Edge edge) {
        Char* const place = room<Char>(text.size(), edge);
        if (!text.empty()) {
            std::memcpy(place, text.data(), text.size() * sizeof(Char));
        }
        return {place, text.size()};
    }

private:
    std::size_t page_;
    std::size_t bytes_ = 0;
    char* base_ = nullptr;
};

/// What one conversion gave; `text` is cut to what was written.
template <typename Char>
struct Outcome {
    std::size_t read;
    std::basic_string<Char> text;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// Runs a converting kernel into exactly `capacity` units of fenced memory.
template <typename In, typename Out>
Outcome<Out> run(Progress (*convert)(const In*, std::size_t, Out*), std::basic_string_view<In> in, std::size_t capacity,
                 Fenced& memory, Fenced::Edge edge = Fenced::Edge::end) {
    Out* const out = memory.room<Out>(capacity, edge);
    const Progress progress = convert(in.data(), in.size(), out);
    return {progress.read, std::basic_string<Out>{out, progress.written}};
}

/// One of the texts that benchmarks and tests speak of, as code points.
enum class Script { ascii, latin, cjk, emoji, mixed };

inline char32_t anyCharacter(Script script, std::mt19937_64& random) {
    const auto pick = [&random](char32_t first, char32_t last) {
        return static_cast<char32_t>(std::uniform_int_distribution<std::uint32_t>{first, last}(random));
    };
    switch (script) {
    case Script::ascii: return pick(0, 0x7F);
    case Script::latin: return pick(0, 2) == 0 ? pick(0x80, 0x7FF) : pick(0x20, 0x7F);
    case Script::cjk: return pick(0, 9) == 0 ? pick(0x20, 0x7F) : pick(0x800, 0xD7FF);
    case Script::emoji: return pick(0, 9) == 0 ? pick(0xE000, 0xFFFF) : pick(0x10000, 0x10FFFF);
    case Script::mixed: break;
    }
    return anyCharacter(static_cast<Script>(pick(0, 3)), random);
}

inline std::u32string anyText(Script script, std::size_t count, std::mt19937_64& random) {
    std::u32string text(count, U'\0');
    for (char32_t& character : text) {
        character = anyCharacter(script, random);
    }
    return text;
}

/// The encoders below are as plain as can be: they are what the kernels are judged by.
inline std::string toUTF8(std::u32string_view text) {
    std::string out;
    for (const char32_t c : text) {
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += {static_cast<char>(0xC0 | c >> 6U), static_cast<char>(0x80 | (c & 0x3F))};
        } else if (c < 0x10000) {
            out += {static_cast<char>(0xE0 | c >> 12U), static_cast<char>(0x80 | (c >> 6U & 0x3F)),
                    static_cast<char>(0x80 | (c & 0x3F))};
        } else {
            out += {static_cast<char>(0xF0 | c >> 18U), static_cast<char>(0x80 | (c >> 12U & 0x3F)),
                    static_cast<char>(0x80 | (c >> 6U & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
        }
    }
    return out;
}

inline std::u16string toUTF16(std::u32string_view text) {
    std::u16string out;
    for (const char32_t c : text) {
        if (c < 0x10000) {
            out += static_cast<char16_t>(c);
        } else {
            out += {static_cast<char16_t>(0xD800 + (c - 0x10000) / 0x400),
                    static_cast<char16_t>(0xDC00 + (c - 0x10000) % 0x400)};
        }
    }
    return out;
}

/// The seed of all random texts: of the environment's QK_SEED, if it is set. A failure prints it.
inline std::uint64_t seed() {
    static const std::uint64_t value = [] {
        const char* const chosen = std::getenv("QK_SEED");
        return chosen != nullptr ? std::strtoull(chosen, nullptr, 10) : std::uint64_t{std::random_device{}()};
    }();
    return value;
}

} // namespace qk::unicode::testing
