// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/JsonRenderer.h"

#include "tools/qkinfo/Quantities.h"

#include <nlohmann/json.hpp>

namespace qk::info {

namespace {

using Json = nlohmann::ordered_json;

struct ContentJson {
    Json operator()(const std::string& text) const { return text; }
    Json operator()(bool value) const { return value; }
    Json operator()(Count count) const { return count.number; }
    Json operator()(Bytes bytes) const { return bytes.number; }
    Json operator()(Megahertz frequency) const { return frequency.number; }
    Json operator()(Percent percent) const { return percent.number; }
    Json operator()(Milliseconds duration) const { return duration.number; }
    Json operator()(BitsPerSecond speed) const { return speed.number; }
    Json operator()(const Names& names) const { return names; }
    Json operator()(const Lines& lines) const { return lines.texts; }
    Json operator()(const Choice& choice) const { return choice.value; }
    Json operator()(const Path& path) const { return path.text; }
    Json operator()(Moment moment) const { return utcTimeText(moment); }
    Json operator()(Date date) const { return utcTimeText(date.moment); }
};

struct BodyJson {
    Json operator()(const Facts& facts) const {
        Json object = Json::object();
        for (const Fact& fact : facts) {
            if (fact.audience != Audience::People) {
                object[std::string(fact.key)] =
                    fact.content.has_value() ? std::visit(ContentJson{}, *fact.content) : Json();
            }
        }
        return object;
    }

    Json operator()(const List& list) const {
        Json array = Json::array();
        for (const Facts& record : list.records) {
            array.push_back((*this)(record));
        }
        return array;
    }
};

std::string dumped(const Json& json, int indent) {
    constexpr bool kAsciiOnly = true;
    return json.dump(indent, ' ', kAsciiOnly, Json::error_handler_t::replace) + "\n";
}

void addSections(Json& object, std::span<const Section> sections) {
    for (const Section& section : sections) {
        object[std::string(section.key)] = section.body.has_value() ? std::visit(BodyJson{}, *section.body) : Json();
    }
}

} // namespace

std::string renderJson(std::span<const Section> sections) {
    Json report = Json::object();
    addSections(report, sections);
    constexpr int kIndent = 2;
    return dumped(report, kIndent);
}

std::string renderJsonLine(Moment time, std::span<const Section> sections) {
    Json sample = Json::object();
    sample["time"] = utcTimeText(time);
    addSections(sample, sections);
    constexpr int kOnOneLine = -1;
    return dumped(sample, kOnOneLine);
}

} // namespace qk::info
