// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/XMLPropertyListTags.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qk::platform {
namespace {

using Kind = XMLPropertyListTag::Kind;

constexpr std::array<std::pair<std::string_view, Kind>, 11> kNames = {{{"key", Kind::Key},
                                                                       {"string", Kind::String},
                                                                       {"integer", Kind::Integer},
                                                                       {"dict", Kind::Dict},
                                                                       {"array", Kind::Array},
                                                                       {"true", Kind::True},
                                                                       {"false", Kind::False},
                                                                       {"real", Kind::Real},
                                                                       {"date", Kind::Date},
                                                                       {"data", Kind::Data},
                                                                       {"plist", Kind::Plist}}};

constexpr bool isSpace(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

} // namespace

void XMLPropertyListTags::skipSpaces() {
    while (at_ < bytes_.size() && isSpace(bytes_[at_])) {
        ++at_;
    }
}

bool XMLPropertyListTags::skip(std::string_view text) {
    const bool isHere = startsWith(text);
    at_ += isHere ? text.size() : 0;
    return isHere;
}

std::optional<std::string_view> XMLPropertyListTags::between(std::string_view begin, std::string_view end) {
    if (!skip(begin)) {
        return std::nullopt;
    }
    const std::size_t found = bytes_.find(end, at_);
    if (found == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t from = std::exchange(at_, found + end.size());
    return bytes_.substr(from, found - from);
}

bool XMLPropertyListTags::skipSpacesAndComments() {
    skipSpaces();
    while (startsWith("<!--")) {
        if (!between("<!--", "-->").has_value()) {
            return false;
        }
        skipSpaces();
    }
    return true;
}

// "<!DOCTYPE ...>" or "<plist ...>": nothing of it matters, but no other tag begins in it.
bool XMLPropertyListTags::skipDeclaration(std::string_view name) {
    if (!skip(name) || at_ == bytes_.size()) {
        return false;
    }
    const std::size_t end = bytes_.find_first_of("<>[", at_);
    const bool isWhole = end != std::string_view::npos && bytes_[end] == '>' &&
                         (end == at_ || (isSpace(bytes_[at_]) && bytes_[end - 1] != '/'));
    at_ = end + 1;
    return isWhole;
}

bool XMLPropertyListTags::skipPrologue() {
    skipSpaces();
    if (startsWith("<?xml") && !between("<?xml", "?>").has_value()) {
        return false;
    }
    if (!skipSpacesAndComments()) {
        return false;
    }
    if (startsWith("<!DOCTYPE") && !(skipDeclaration("<!DOCTYPE") && skipSpacesAndComments())) {
        return false;
    }
    return skipDeclaration("<plist");
}

std::optional<XMLPropertyListTag> XMLPropertyListTags::tag() {
    if (!skip("<")) {
        return std::nullopt;
    }
    Tag tag{.kind = Kind::Plist, .closes = skip("/"), .isEmpty = false};
    const std::size_t begin = at_;
    while (at_ < bytes_.size() && bytes_[at_] >= 'a' && bytes_[at_] <= 'z') {
        ++at_;
    }
    const std::string_view name = bytes_.substr(begin, at_ - begin);
    const auto* known = std::ranges::find(kNames, name, [](const auto& entry) { return entry.first; });
    skipSpaces();
    tag.isEmpty = !tag.closes && skip("/");
    if (known == kNames.end() || !skip(">")) {
        return std::nullopt;
    }
    tag.kind = known->second;
    return tag;
}

std::optional<std::string_view> XMLPropertyListTags::text() {
    const std::size_t end = bytes_.find('<', at_);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t begin = std::exchange(at_, end);
    return bytes_.substr(begin, end - begin);
}

bool XMLPropertyListTags::skipEnd(Tag::Kind kind) {
    const std::optional<Tag> end = tag();
    return end.has_value() && end->closes && end->kind == kind;
}

} // namespace qk::platform
