// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/Format.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/field/FieldCells.h"
#include "tools/qkinfo/field/FieldEditor.h"

#include <nlohmann/json.hpp>

namespace qk::info {

std::vector<FormattedText> formatted(const FormatOptions& options) {
    std::vector<FormattedText> results;
    results.reserve(options.texts.size());
    const auto formatter = options.kind->makeFormatter();
    for (const std::string& utf8 : options.texts) {
        FormattedText result{NSString::fromUTF8Lossy(utf8), std::nullopt};
        FieldEditor editor(formatter);
        if (editor.paste(result.text) != EditOutcome::Refused) {
            result.shown = finishedText(*options.kind, *formatter, editor.text());
        }
        results.push_back(std::move(result));
    }
    return results;
}

std::string renderFormatted(const std::vector<FormattedText>& texts) {
    std::string lines;
    for (const FormattedText& text : texts) {
        if (text.shown.has_value()) {
            lines.append(shownInField(*text.shown)).append("\n");
        }
    }
    return lines;
}

std::string renderFormattedJson(const FieldKind& kind, const std::vector<FormattedText>& texts) {
    using Json = nlohmann::ordered_json;
    Json list = Json::array();
    for (const FormattedText& text : texts) {
        const Json shown = text.shown.has_value() ? Json(wellFormedUTF8(*text.shown)) : Json();
        list.push_back({{"text", wellFormedUTF8(text.text)}, {"shown", shown}});
    }
    const Json object{{"kind", std::string(kind.name)}, {"texts", list}};
    constexpr int kIndent = 2;
    constexpr bool kAsciiOnly = true;
    return object.dump(kIndent, ' ', kAsciiOnly, Json::error_handler_t::replace) + "\n";
}

std::vector<std::string> refusals(const FieldKind& kind, const std::vector<FormattedText>& texts) {
    std::vector<std::string> messages;
    for (const FormattedText& text : texts) {
        if (!text.shown.has_value()) {
            messages.push_back("a field of the kind " + std::string(kind.name) + " refuses \"" +
                               wellFormedUTF8(text.text) + "\"");
        }
    }
    return messages;
}

} // namespace qk::info
