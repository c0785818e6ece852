// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListGuard.h"
#include "QKFoundation/platform/linux/PropertyListScalars.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

enum class Kind : std::uint8_t { Plist, Array, Dict, Key, String, Integer, Real, Date, Data, True, False };

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

struct Tag {
    Kind kind = Kind::Plist;
    bool closes = false;  // "</key>"
    bool isEmpty = false; // "<key/>"
    std::size_t begin = 0;
};

struct Container {
    bool isDictionary = false;
    bool hasKey = false; // whose value is still to come
};

struct Edit {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string_view replacement;
};

constexpr bool isSpace(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

std::string edited(std::string_view bytes, const std::vector<Edit>& edits) {
    std::string result;
    result.reserve(bytes.size() + 16 * edits.size());
    std::size_t done = 0;
    for (const Edit& edit : edits) {
        result.append(bytes.substr(done, edit.begin - done)).append(edit.replacement);
        done = edit.end;
    }
    return result.append(bytes.substr(done));
}

// Walks the text once, from tag to tag.
class Walk {
public:
    explicit Walk(std::string_view bytes) : bytes_(bytes) {}

    std::optional<TamePropertyList> run() {
        if (!prologue() || !values() || !epilogue()) {
            return std::nullopt;
        }
        TamePropertyList result{.corrected = std::nullopt, .hasFarDates = hasFarDates_};
        if (!edits_.empty()) {
            result.corrected = edited(bytes_, edits_);
        }
        return result;
    }

private:
    [[nodiscard]] bool startsWith(std::string_view text) const { return bytes_.substr(at_, text.size()) == text; }

    // The position of `byte`, which must come.
    [[nodiscard]] std::optional<std::size_t> next(char byte) const {
        const void* found = std::memchr(bytes_.data() + at_, byte, bytes_.size() - at_);
        return found != nullptr
                   ? std::optional(static_cast<std::size_t>(static_cast<const char*>(found) - bytes_.data()))
                   : std::nullopt;
    }

    void skipSpaces() {
        while (at_ < bytes_.size() && isSpace(bytes_[at_])) {
            ++at_;
        }
    }

    // Goes behind `end`, when what is opened by `begin` stands here.
    bool skipBetween(std::string_view begin, std::string_view end) {
        const std::size_t found = bytes_.find(end, at_ + begin.size());
        at_ = found == std::string_view::npos ? at_ : found + end.size();
        return found != std::string_view::npos;
    }

    bool skipSpacesAndComments() {
        skipSpaces();
        while (startsWith("<!--")) {
            if (!skipBetween("<!--", "-->")) {
                return false;
            }
            skipSpaces();
        }
        return true;
    }

    // "<!DOCTYPE ...>" or "<plist ...>": nothing of it matters, but no other tag begins in it.
    bool skipDeclaration(std::string_view name) {
        if (!startsWith(name) || at_ + name.size() == bytes_.size()) {
            return false;
        }
        at_ += name.size();
        const std::size_t end = bytes_.find_first_of("<>[", at_);
        const bool isWhole = end != std::string_view::npos && bytes_[end] == '>' &&
                             (end == at_ || (isSpace(bytes_[at_]) && bytes_[end - 1] != '/'));
        at_ = end + 1;
        return isWhole;
    }

    bool prologue() {
        skipSpaces();
        if (startsWith("<?xml") && !skipBetween("<?xml", "?>")) {
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

    bool epilogue() { return skipSpacesAndComments() && at_ == bytes_.size(); }

    std::optional<Tag> tag() {
        if (at_ == bytes_.size() || bytes_[at_] != '<') {
            return std::nullopt;
        }
        Tag tag{.kind = Kind::Plist, .closes = bytes_.substr(at_ + 1).starts_with('/'), .isEmpty = false, .begin = at_};
        at_ += tag.closes ? 2 : 1;
        const std::size_t begin = at_;
        while (at_ < bytes_.size() && bytes_[at_] >= 'a' && bytes_[at_] <= 'z') {
            ++at_;
        }
        const std::string_view name = bytes_.substr(begin, at_ - begin);
        const auto* known = kNames.begin();
        while (known != kNames.end() && known->first != name) {
            ++known;
        }
        skipSpaces();
        if (!tag.closes && startsWith("/")) {
            tag.isEmpty = true;
            ++at_;
        }
        if (known == kNames.end() || !startsWith(">")) {
            return std::nullopt;
        }
        ++at_;
        tag.kind = known->second;
        return tag;
    }

    bool closingTag(Kind kind) {
        const std::optional<Tag> closing = tag();
        return closing.has_value() && closing->closes && closing->kind == kind;
    }

    bool values() {
        for (;;) {
            const std::optional<Tag> next = skipSpacesAndComments() ? tag() : std::nullopt;
            if (!next.has_value()) {
                return false;
            }
            if (next->closes && next->kind == Kind::Plist) {
                return containers_.empty() && hasRoot_;
            }
            if (next->closes ? !close(next->kind) : !(isExpected(next->kind) && open(*next))) {
                return false;
            }
        }
    }

    // Whether something of this kind may begin here; notes that it has.
    bool isExpected(Kind kind) {
        if (containers_.empty()) {
            return kind != Kind::Key && !std::exchange(hasRoot_, true);
        }
        Container& container = containers_.back();
        if (!container.isDictionary) {
            return kind != Kind::Key;
        }
        const bool isKey = kind == Kind::Key;
        return std::exchange(container.hasKey, isKey) != isKey;
    }

    bool close(Kind kind) {
        if (containers_.empty() || (kind != Kind::Array && kind != Kind::Dict) ||
            containers_.back().isDictionary != (kind == Kind::Dict) || containers_.back().hasKey) {
            return false;
        }
        containers_.pop_back();
        return true;
    }

    bool open(const Tag& opening) {
        switch (opening.kind) {
        case Kind::Array:
        case Kind::Dict:
            if (!opening.isEmpty) {
                containers_.push_back({.isDictionary = opening.kind == Kind::Dict});
            }
            return containers_.size() <= kDeepestPropertyList;
        case Kind::Key:
            if (opening.isEmpty) {
                edits_.push_back({opening.begin, at_, "<key></key>"}); // which the parser takes for no key
            }
            return opening.isEmpty || text(opening.kind);
        case Kind::String: return opening.isEmpty || text(opening.kind);
        case Kind::Data:
        case Kind::True:
        case Kind::False:
            if (opening.isEmpty) {
                return true;
            }
            [[fallthrough]];
        case Kind::Integer:
        case Kind::Real:
        case Kind::Date: return !opening.isEmpty && scalar(opening.kind);
        case Kind::Plist: break;
        }
        return false;
    }

    // Text with references, CDATA sections and comments.
    bool text(Kind kind) {
        for (;;) {
            const std::optional<std::size_t> end = next('<');
            if (!end.has_value() || !hasTameReferences(bytes_.substr(at_, *end - at_))) {
                return false;
            }
            at_ = *end;
            const bool isMarked = startsWith("<!");
            if (!isMarked) {
                return closingTag(kind);
            }
            if (startsWith("<![CDATA[") ? !skipBetween("<![CDATA[", "]]>")
                                        : !startsWith("<!--") || !skipBetween("<!--", "-->")) {
                return false;
            }
        }
    }

    bool scalar(Kind kind) {
        const std::optional<std::size_t> end = next('<');
        if (!end.has_value()) {
            return false;
        }
        const std::size_t begin = std::exchange(at_, *end);
        return isTame(kind, begin, bytes_.substr(begin, *end - begin)) && closingTag(kind);
    }

    bool isTame(Kind kind, std::size_t begin, std::string_view content) {
        switch (kind) {
        case Kind::Data: return isBase64(content);
        case Kind::Real: return isRealText(content);
        case Kind::Date: {
            const std::optional<int> year = yearOfDateText(content);
            hasFarDates_ = hasFarDates_ || (year.has_value() && (*year < kFirstNearYear || *year > kLastNearYear));
            return year.has_value();
        }
        case Kind::Integer: {
            const std::optional<IntegerText> integer = integerText(content);
            if (integer.has_value() && integer->zeros > 0) { // which the parser takes for the mark of an octal number
                const std::size_t zeros = begin + integer->digits;
                edits_.push_back({zeros, zeros + integer->zeros, ""});
            }
            return integer.has_value();
        }
        default: return content.empty(); // "<true></true>"
        }
    }

    // The years that the parser's 32 bits hold as a whole.
    static constexpr int kFirstNearYear = 1933;
    static constexpr int kLastNearYear = 2068;

    std::string_view bytes_;
    std::size_t at_ = 0;
    std::vector<Container> containers_;
    std::vector<Edit> edits_;
    bool hasRoot_ = false;
    bool hasFarDates_ = false;
};

} // namespace

std::optional<TamePropertyList> tameXMLPropertyList(std::string_view bytes) {
    if (bytes.find('\0') != std::string_view::npos || !unicode::isValidUTF8(bytes)) {
        return std::nullopt;
    }
    return Walk(bytes).run();
}

} // namespace qk::platform
