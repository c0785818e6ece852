// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace qk {

/// `QKOSUpdateParser`: reads the listing that the update tool prints into a dictionary per pending update.
///
/// An entry of the listing is a line with three blanks, a star (or a hyphen) and a blank before "name-version",
/// followed by a line with the description, the version, the size and bracketed flags:
///
///        * ExampleTool-2.1
///     	Example Tool (2.1), 20480K [recommended] [restart]
///
/// or, in the older form, "Example Tool, 2.1, 20480K [recommended]". An entry that does not fit, or whose two versions
/// differ, is skipped. The dictionaries have the keys "name", "version", "description", "size" (texts, as printed),
/// "restart" and "recommended" (booleans). Threads: one parser is used by one thread at a time.
class QK_EXPORT QKOSUpdateParser : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithString:`. A parser for `string`. What is not a text is kept, and fails to parse.
    [[nodiscard]] static std::shared_ptr<QKOSUpdateParser> initWithString(const std::optional<Value>& string);

    /// `parsingString`. The text to parse.
    [[nodiscard]] const std::optional<Value>& parsingString() const noexcept { return parsingString_; }
    void setParsingString(const std::optional<Value>& string) { parsingString_ = string; }

    /// `parsedObjects`. The dictionaries of the last `startParsing`, in the listing's order; nothing before the first
    /// one that had a text. An array that was handed out does not change with the next parse.
    [[nodiscard]] const std::optional<NSArray>& parsedObjects() const noexcept { return parsedObjects_; }
    void setParsedObjects(const std::optional<NSArray>& objects) { parsedObjects_ = objects; }

    /// `startParsing`. True when at least one update was found, and when a listing without any entry says "new
    /// software" (there is none, then). False without a text, or with an empty one, which leaves the previous
    /// `parsedObjects`; every other failure leaves it empty.
    bool startParsing();

    /// `parseFirstLine:`. "name" and "version" of an entry's label: what stands before and behind its last hyphen.
    /// Nothing without a hyphen, and for a text that is missing or empty.
    [[nodiscard]] std::optional<NSDictionary> parseFirstLine(const std::optional<NSString>& line) const;

    /// `parseNewStyleSecondLine:`. "description", "version", "size", "restart" and "recommended" of "Example Tool
    /// (2.1), 20480K [restart]". What the line does not hold is ""; nothing for a text that is missing or empty.
    [[nodiscard]] std::optional<NSDictionary> parseNewStyleSecondLine(const std::optional<NSString>& line) const;

    /// `parseOldStyleSecondLine:`. The same of "Example Tool, 2.1, 20480K [restart]".
    [[nodiscard]] std::optional<NSDictionary> parseOldStyleSecondLine(const std::optional<NSString>& line) const;

    /// `numberOfOccurencesOfString:inString:`. How often `string` occurs in `inString`, without overlaps; 0 when either
    /// is missing or empty.
    [[nodiscard]] std::size_t numberOfOccurencesOfString(const std::optional<NSString>& string,
                                                         const std::optional<NSString>& inString) const;

private:
    explicit QKOSUpdateParser(const std::optional<Value>& string) : parsingString_(string) {}

    [[nodiscard]] std::optional<NSDictionary> parseEntry(const NSString& entry) const;

    std::optional<Value> parsingString_;
    std::optional<NSArray> parsedObjects_;
};

} // namespace qk
