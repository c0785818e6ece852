// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKOSUpdateParser.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace qk {
namespace {

constexpr std::u16string_view kStarMarker = u"   * ";
constexpr std::u16string_view kHyphenMarker = u"   - ";

// The text from two units behind a comma: the comma and the one behind it, normally a blank, are skipped unseen.
NSString behindComma(const NSString& text, std::size_t comma) {
    return text.substringFromIndex(comma + 2);
}

// "size", "restart" and "recommended" from the end of an entry's second line, such as "20480K [restart]".
void addSizeAndFlags(const NSString& tail, NSMutableDictionary& entry) {
    const auto bracket = tail.find(u"[");
    if (!bracket.has_value()) {
        entry.setObject(tail, "size");
        entry.setObject(false, "restart");
        entry.setObject(false, "recommended");
        return;
    }
    const std::size_t sizeLength = *bracket == 0 ? 0 : *bracket - 1; // the blank before the bracket goes
    entry.setObject(tail.substringToIndex(sizeLength), "size");
    entry.setObject(tail.contains(u"[restart]"), "restart");
    entry.setObject(tail.contains(u"[recommended]"), "recommended");
}

bool isMissing(const std::optional<NSString>& text) {
    return !text.has_value() || text->isEmpty();
}

// The pieces of the listing between the markers, empty ones removed. The text is split at the stars first: where the
// two markers overlap, the star wins.
std::vector<NSString> entriesOf(const NSString& body) {
    std::vector<NSString> entries;
    for (const NSString& piece : body.componentsSeparatedByString(NSString(kStarMarker))) {
        for (NSString& entry : piece.componentsSeparatedByString(NSString(kHyphenMarker))) {
            if (!entry.isEmpty()) {
                entries.push_back(std::move(entry));
            }
        }
    }
    return entries;
}

} // namespace

const ClassDescription& QKOSUpdateParser::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKOSUpdateParser>("QKOSUpdateParser", NSObject::describedClass())
            .property("parsingString", &QKOSUpdateParser::parsingString, &QKOSUpdateParser::setParsingString)
            .property("parsedObjects", &QKOSUpdateParser::parsedObjects, &QKOSUpdateParser::setParsedObjects)
            .method("startParsing", &QKOSUpdateParser::startParsing)
            .method("parseFirstLine:", &QKOSUpdateParser::parseFirstLine)
            .method("parseOldStyleSecondLine:", &QKOSUpdateParser::parseOldStyleSecondLine)
            .method("parseNewStyleSecondLine:", &QKOSUpdateParser::parseNewStyleSecondLine)
            .method("numberOfOccurencesOfString:inString:", &QKOSUpdateParser::numberOfOccurencesOfString)
            .build();
    return description;
}

const ClassDescription& QKOSUpdateParser::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKOSUpdateParser> QKOSUpdateParser::initWithString(const std::optional<Value>& string) {
    return std::shared_ptr<QKOSUpdateParser>(new QKOSUpdateParser(string));
}

bool QKOSUpdateParser::startParsing() {
    const NSString* text = parsingString_.has_value() ? parsingString_->as<NSString>() : nullptr;
    if (text == nullptr || text->isEmpty()) {
        return false;
    }
    parsedObjects_ = NSArray();
    const auto star = text->find(kStarMarker);
    const auto hyphen = text->find(kHyphenMarker);
    if (!star.has_value() && !hyphen.has_value()) {
        return text->contains(u"new software");
    }
    const std::size_t start = std::min(star.value_or(text->length()), hyphen.value_or(text->length()));
    std::vector<Value> updates;
    for (const NSString& entry : entriesOf(text->substringFromIndex(start))) {
        if (auto update = parseEntry(entry)) {
            updates.emplace_back(*std::move(update));
        }
    }
    parsedObjects_ = NSArray(std::move(updates));
    return !parsedObjects_->isEmpty();
}

std::optional<NSDictionary> QKOSUpdateParser::parseEntry(const NSString& entry) const {
    std::vector<NSString> lines = entry.componentsSeparatedByString("\n");
    std::erase_if(lines, [](const NSString& line) { return line.isEmpty(); });
    if (lines.size() < 2) {
        return std::nullopt;
    }
    const auto first = parseFirstLine(lines[0].stringByTrimmingWhitespace());
    const NSString secondLine = lines[1].stringByTrimmingWhitespace();
    std::optional<NSDictionary> second;
    switch (numberOfOccurencesOfString(",", secondLine)) {
    case 2: second = parseOldStyleSecondLine(secondLine); break;
    case 1: second = parseNewStyleSecondLine(secondLine); break;
    default: return std::nullopt;
    }
    if (!first.has_value() || !second.has_value() ||
        *first->objectForKey("version") != *second->objectForKey("version")) {
        return std::nullopt;
    }
    NSMutableDictionary update(*first);
    update.addEntriesFromDictionary(*second);
    return update.copy();
}

std::optional<NSDictionary> QKOSUpdateParser::parseFirstLine(const std::optional<NSString>& line) const {
    const auto hyphen = line.has_value() ? line->findLast(u"-") : std::nullopt;
    if (!hyphen.has_value()) {
        return std::nullopt;
    }
    return NSDictionary{{"name", line->substringToIndex(*hyphen)}, {"version", line->substringFromIndex(*hyphen + 1)}};
}

std::optional<NSDictionary> QKOSUpdateParser::parseNewStyleSecondLine(const std::optional<NSString>& line) const {
    if (isMissing(line)) {
        return std::nullopt;
    }
    NSMutableDictionary entry;
    const auto comma = line->find(u",");
    const NSString head = line->substringToIndex(comma.value_or(0));
    NSString description;
    NSString version;
    if (const auto parenthesis = head.find(u" (")) {
        description = head.substringToIndex(*parenthesis);
        const NSString rest = head.substringFromIndex(*parenthesis + 2);
        if (const auto end = rest.find(u")")) {
            version = rest.substringToIndex(*end);
        }
    }
    entry.setObject(description, "description");
    entry.setObject(version, "version");
    addSizeAndFlags(comma.has_value() ? behindComma(*line, *comma) : NSString(), entry);
    return entry.copy();
}

std::optional<NSDictionary> QKOSUpdateParser::parseOldStyleSecondLine(const std::optional<NSString>& line) const {
    if (isMissing(line)) {
        return std::nullopt;
    }
    NSMutableDictionary entry;
    NSString description;
    NSString version;
    NSString tail;
    if (const auto comma = line->find(u",")) {
        description = line->substringToIndex(*comma);
        const NSString rest = behindComma(*line, *comma);
        if (const auto second = rest.find(u",")) {
            version = rest.substringToIndex(*second);
            tail = behindComma(rest, *second);
        }
    }
    entry.setObject(description, "description");
    entry.setObject(version, "version");
    addSizeAndFlags(tail, entry);
    return entry.copy();
}

std::size_t QKOSUpdateParser::numberOfOccurencesOfString(const std::optional<NSString>& string,
                                                         const std::optional<NSString>& inString) const {
    if (isMissing(string) || isMissing(inString)) {
        return 0;
    }
    std::size_t count = 0;
    for (auto found = inString->find(string->units()); found.has_value();
         found = inString->find(string->units(), *found + string->length())) {
        ++count;
    }
    return count;
}

} // namespace qk
