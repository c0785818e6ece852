// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListReading.h"
#include "QKFoundation/platform/linux/PropertyListScalars.h"
#include "QKFoundation/platform/linux/XMLPropertyListTags.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using Tag = XMLPropertyListTag;
using Kind = Tag::Kind;

// The characters up to the tag that ends `kind`; nothing when there is something else than references, CDATA sections
// and comments.
std::optional<NSString> characters(XMLPropertyListTags& tags, Kind kind) {
    std::string gathered;
    for (;;) {
        const std::optional<std::string_view> piece = tags.text();
        if (!piece.has_value()) {
            return std::nullopt;
        }
        const bool isLast = !tags.startsWith("<!");
        if (isLast && gathered.empty() && piece->find('&') == std::string_view::npos) { // as nearly always
            return tags.skipEnd(kind) ? NSString::fromUTF8(*piece) : std::nullopt;
        }
        if (!appendCharacters(*piece, gathered)) {
            return std::nullopt;
        }
        if (isLast) {
            return tags.skipEnd(kind) ? NSString::fromUTF8(gathered) : std::nullopt;
        }
        if (const auto section = tags.between("<![CDATA[", "]]>")) {
            gathered.append(*section);
        } else if (!tags.between("<!--", "-->").has_value()) {
            return std::nullopt;
        }
    }
}

// Records have the same keys in the same order: each key tells which one followed it the last time, and then only a
// comparison is needed.
class Keys {
public:
    // The key up to its end; nothing when it is no text.
    std::optional<NSString> next(XMLPropertyListTags& tags) {
        const std::size_t expected = known_[last_].next;
        if (expected != 0 && tags.skip(known_[expected].text)) {
            last_ = expected;
            return known_[expected].key;
        }
        const std::string_view rest = tags.rest();
        std::optional<NSString> key = characters(tags, Kind::Key);
        if (key.has_value() && known_.size() < kMost) {
            remember(rest.substr(0, rest.size() - tags.rest().size()), *key);
        }
        return key;
    }

private:
    static constexpr std::size_t kMost = 256;

    struct Known {
        std::string_view text; // with the tag that ends it
        NSString key;
        std::size_t next = 0; // 0: not known
    };

    void remember(std::string_view text, const NSString& key) {
        std::size_t place = 1;
        while (place < known_.size() && known_[place].text != text) {
            ++place;
        }
        if (place == known_.size()) {
            known_.push_back({text, key, 0});
        }
        known_[last_].next = place;
        last_ = place;
    }

    std::vector<Known> known_ = std::vector<Known>(1); // the first one stands for the beginning
    std::size_t last_ = 0;
};

class Reader {
public:
    explicit Reader(std::string_view bytes) : tags_(bytes) {}

    std::optional<Value> run() {
        const bool isList = tags_.skipPrologue() && readValues() && tags_.isAtEnd();
        return isList ? std::optional(std::move(values_.front())) : std::nullopt;
    }

private:
    // A container that has not ended: where its keys and values begin among those that are waiting.
    struct Container {
        bool isDictionary = false;
        std::size_t firstKey = 0;
        std::size_t firstValue = 0;
    };

    bool readValues() {
        for (;;) {
            const std::optional<Tag> tag = tags_.next();
            if (!tag.has_value()) {
                return false;
            }
            if (tag->closes && tag->kind == Kind::Plist) {
                return containers_.empty() && !values_.empty();
            }
            if (tag->closes ? !close(tag->kind) : !(isExpected(tag->kind) && open(*tag))) {
                return false;
            }
        }
    }

    [[nodiscard]] bool isValueDue(const Container& dictionary) const {
        return keys_.size() - dictionary.firstKey > values_.size() - dictionary.firstValue;
    }

    [[nodiscard]] bool isExpected(Kind kind) const {
        if (containers_.empty()) {
            return kind != Kind::Key && values_.empty();
        }
        const Container& container = containers_.back();
        return (kind == Kind::Key) == (container.isDictionary && !isValueDue(container));
    }

    bool close(Kind kind) {
        if (containers_.empty() || (kind != Kind::Array && kind != Kind::Dict) ||
            containers_.back().isDictionary != (kind == Kind::Dict) || isValueDue(containers_.back())) {
            return false;
        }
        const Container container = containers_.back();
        containers_.pop_back();
        Value whole = container.isDictionary ? dictionary(container) : array(container);
        values_.resize(container.firstValue);
        keys_.resize(container.firstKey);
        values_.push_back(std::move(whole));
        return true;
    }

    Value array(const Container& container) {
        const auto first = values_.begin() + static_cast<std::ptrdiff_t>(container.firstValue);
        return NSArray(std::vector<Value>(std::move_iterator(first), std::move_iterator(values_.end())));
    }

    Value dictionary(const Container& container) {
        std::vector<NSDictionary::Entry> entries;
        entries.reserve(keys_.size() - container.firstKey);
        auto value = values_.begin() + static_cast<std::ptrdiff_t>(container.firstValue);
        for (std::size_t key = container.firstKey; key < keys_.size(); ++key, ++value) {
            entries.emplace_back(std::move(keys_[key]), std::move(*value));
        }
        return NSDictionary(std::move(entries));
    }

    bool open(Tag tag) {
        switch (tag.kind) {
        case Kind::Array: return tag.isEmpty ? add(NSArray()) : openContainer(false);
        case Kind::Dict: return tag.isEmpty ? add(NSDictionary()) : openContainer(true);
        case Kind::Key: return append(keys_, tag.isEmpty ? NSString() : keyTexts_.next(tags_));
        case Kind::String: return append(values_, tag.isEmpty ? NSString() : characters(tags_, tag.kind));
        case Kind::Data: return append(values_, tag.isEmpty ? NSData() : scalar(tag.kind, dataOfText));
        case Kind::True:
        case Kind::False: return (tag.isEmpty || isEmptyUpToEnd(tag.kind)) && add(tag.kind == Kind::True);
        case Kind::Integer: return !tag.isEmpty && append(values_, scalar(tag.kind, integerOfText));
        case Kind::Real: return !tag.isEmpty && append(values_, scalar(tag.kind, realOfText));
        case Kind::Date: return !tag.isEmpty && append(values_, scalar(tag.kind, dateOfText));
        case Kind::Plist: break;
        }
        return false;
    }

    bool openContainer(bool isDictionary) {
        containers_.push_back({isDictionary, keys_.size(), values_.size()});
        return containers_.size() <= kDeepestPropertyList;
    }

    bool isEmptyUpToEnd(Kind kind) { return tags_.text() == std::string_view() && tags_.skipEnd(kind); }

    template <typename T>
    std::optional<T> scalar(Kind kind, std::optional<T> (*read)(std::string_view)) {
        const std::optional<std::string_view> text = tags_.text();
        return text.has_value() && tags_.skipEnd(kind) ? read(*text) : std::nullopt;
    }

    bool add(Value value) {
        values_.push_back(std::move(value));
        return true;
    }

    template <typename Held, typename T>
    static bool append(std::vector<Held>& held, std::optional<T> value) {
        if (!value.has_value()) {
            return false;
        }
        held.push_back(*std::move(value));
        return true;
    }

    XMLPropertyListTags tags_;
    Keys keyTexts_;
    std::vector<Container> containers_;
    std::vector<NSString> keys_; // those of containers that have not ended, and so the values
    std::vector<Value> values_;
};

} // namespace

std::optional<Value> xmlPropertyList(std::string_view bytes) {
    if (bytes.find('\0') != std::string_view::npos || !unicode::isValidUTF8(bytes)) {
        return std::nullopt;
    }
    return Reader(bytes).run();
}

} // namespace qk::platform
