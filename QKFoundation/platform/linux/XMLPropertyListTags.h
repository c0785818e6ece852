// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace qk::platform {

struct XMLPropertyListTag {
    enum class Kind : std::uint8_t { Plist, Array, Dict, Key, String, Integer, Real, Date, Data, True, False };

    Kind kind = Kind::Plist;
    bool closes = false;  ///< "</key>"
    bool isEmpty = false; ///< "<key/>"
};

/// Goes through an XML property list once, from tag to tag. What fails leaves it anywhere. Threads: one at a time.
class XMLPropertyListTags {
public:
    using Tag = XMLPropertyListTag;

    explicit XMLPropertyListTags(std::string_view bytes) : bytes_(bytes) {}

    /// Goes behind the <plist> tag. False when something else stands there than may stand in front of it.
    [[nodiscard]] bool skipPrologue();

    /// Whether only white space and comments follow.
    [[nodiscard]] bool isAtEnd() { return skipSpacesAndComments() && at_ == bytes_.size(); }

    /// Goes behind the next tag, in front of which white space and comments may stand. Nothing for anything else.
    [[nodiscard]] std::optional<Tag> next() { return skipSpacesAndComments() ? tag() : std::nullopt; }

    /// Goes to the next "<", which must come, and returns what stands in front of it.
    [[nodiscard]] std::optional<std::string_view> text();

    /// Goes behind the tag that ends `kind`. False when it does not stand here.
    [[nodiscard]] bool skipEnd(Tag::Kind kind);

    /// Goes behind `text`. False, and stays, when it does not stand here.
    [[nodiscard]] bool skip(std::string_view text);

    /// Goes behind `end` and returns what stands in front of it, when `begin` stands here; else nothing.
    [[nodiscard]] std::optional<std::string_view> between(std::string_view begin, std::string_view end);

    [[nodiscard]] bool startsWith(std::string_view text) const { return bytes_.substr(at_, text.size()) == text; }

    /// All bytes from here on.
    [[nodiscard]] std::string_view rest() const { return bytes_.substr(at_); }

private:
    [[nodiscard]] std::optional<Tag> tag();
    void skipSpaces();
    [[nodiscard]] bool skipSpacesAndComments();
    [[nodiscard]] bool skipDeclaration(std::string_view name);

    std::string_view bytes_;
    std::size_t at_ = 0;
};

} // namespace qk::platform
