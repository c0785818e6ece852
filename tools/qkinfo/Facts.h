// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSDate.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What the program has found out, independent of how it is shown: the text and the JSON are two views of the same
/// sections.
namespace qk::info {

struct Count {
    std::uint64_t number;
    friend bool operator==(const Count&, const Count&) = default;
};

struct Bytes {
    std::uint64_t number;
    friend bool operator==(const Bytes&, const Bytes&) = default;
};

struct Megahertz {
    std::uint64_t number;
    friend bool operator==(const Megahertz&, const Megahertz&) = default;
};

/// A share of a whole. A finite number, which need not lie between 0 and 100.
struct Percent {
    double number;
    friend bool operator==(const Percent&, const Percent&) = default;
};

struct Milliseconds {
    std::uint64_t number;
    friend bool operator==(const Milliseconds&, const Milliseconds&) = default;
};

struct BitsPerSecond {
    std::uint64_t number;
    friend bool operator==(const BitsPerSecond&, const BitsPerSecond&) = default;
};

/// Names of things, as many as there are.
using Names = std::vector<std::string>;

/// Texts, as many as there are, each of which people find on a line of its own.
struct Lines {
    std::vector<std::string> texts;
    friend bool operator==(const Lines&, const Lines&) = default;
};

/// Yes or no, for which people have words of their own.
struct Choice {
    bool value;
    std::string_view yes; ///< "up"
    std::string_view no;  ///< "down"
    friend bool operator==(const Choice&, const Choice&) = default;
};

/// The path of a file, in which every character counts, blanks too.
struct Path {
    std::string text;
    friend bool operator==(const Path&, const Path&) = default;
};

/// Whole seconds since 1970-01-01 00:00:00 UTC, in a year from 0 to 9999.
struct Moment {
    std::int64_t seconds;
    friend bool operator==(const Moment&, const Moment&) = default;
};

/// A moment of which people want to know the date and the time, not how long ago it was.
struct Date {
    Moment moment;
    friend bool operator==(const Date&, const Date&) = default;
};

/// What a fact says. Texts are well-formed UTF-8 and not blank; they come from the machine and may hold anything else.
using Content = std::variant<std::string, bool, Count, Bytes, Megahertz, Percent, Milliseconds, BitsPerSecond, Names,
                             Lines, Choice, Path, Moment, Date>;

/// Who is shown a fact.
enum class Audience {
    Everyone,
    People,   ///< only those that read the text
    Programs, ///< only those that read the JSON
};

/// One thing that is known about the machine, or would be if the machine told it.
struct Fact {
    std::string_view key;   ///< its name in the JSON, with the unit in it: "memory_bytes"
    std::string_view label; ///< its name for people
    std::optional<Content> content;
    Audience audience = Audience::Everyone;
};

using Facts = std::vector<Fact>;

/// How people see the records of a list.
enum class ListForm {
    Table,  ///< a row each
    Blocks, ///< facts below each other, under what the first of them says
};

/// Things of one kind. All records have the same keys, in the same order.
struct List {
    std::vector<Facts> records;
    std::string_view whenEmpty;                                          ///< a sentence: "Up to date."
    std::string_view one;                                                ///< what a record is called: "update"
    std::string_view many;                                               ///< "updates"
    std::size_t mostForPeople = std::numeric_limits<std::size_t>::max(); ///< the text stops there and says so
    ListForm form = ListForm::Table;
};

using Body = std::variant<Facts, List>;

struct Section {
    std::string_view key; ///< its name in the JSON
    std::string_view title;
    std::optional<Body> body; ///< nothing when the machine told nothing of all this
};

/// A text of the machine without the blanks and line ends around it; a text that is blank counts as not told.
/// Lone surrogates become U+FFFD.
[[nodiscard]] std::optional<Content> textContent(const std::optional<NSString>& text);

/// A number, of which 0 counts as not told.
template <typename Unit>
[[nodiscard]] std::optional<Content> numberContent(std::uint64_t number) {
    return number != 0 ? std::optional<Content>(Unit{number}) : std::nullopt;
}

/// A share; one that is no number, as when nothing was measured, counts as not told.
[[nodiscard]] std::optional<Content> percentContent(double percent);

/// A moment; one outside of the years that a calendar shows counts as not told.
[[nodiscard]] std::optional<Content> momentContent(const std::optional<NSDate>& date);

} // namespace qk::info
