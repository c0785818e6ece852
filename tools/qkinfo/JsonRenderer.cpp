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
    Json operator()(Moment moment) const { return utcTimeText(moment); }
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

} // namespace

std::string renderJson(std::span<const Section> sections) {
    Json report = Json::object();
    for (const Section& section : sections) {
        report[std::string(section.key)] = section.body.has_value() ? std::visit(BodyJson{}, *section.body) : Json();
    }
    constexpr int kIndent = 2;
    constexpr bool kAsciiOnly = true;
    return report.dump(kIndent, ' ', kAsciiOnly, Json::error_handler_t::replace) + "\n";
}

} // namespace qk::info
