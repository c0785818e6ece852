// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/JsonRenderer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace qk::info {

namespace {

std::string render(const std::vector<Section>& sections) {
    return renderJson(sections);
}

} // namespace

TEST(JsonRenderer, AbsenceIsNull) {
    EXPECT_EQ(render({{"updates", "Updates", std::nullopt}, {"hardware", "Hardware", Facts{{"model", "Model", {}}}}}),
              "{\n"
              "  \"updates\": null,\n"
              "  \"hardware\": {\n"
              "    \"model\": null\n"
              "  }\n"
              "}\n");
}

TEST(JsonRenderer, NothingIsAnEmptyObject) {
    EXPECT_EQ(render({}), "{}\n");
}

TEST(JsonRenderer, EveryKindIsRawAndInOrder) {
    const std::string text = render({{"some", "Some",
                                      Facts{{"z_text", "", std::string("two words")},
                                            {"yes", "", true},
                                            {"count", "", Count{2}},
                                            {"memory_bytes", "", Bytes{UINT64_MAX}},
                                            {"frequency_mhz", "", Megahertz{2599}},
                                            {"load_percent", "", Percent{12.25}},
                                            {"interval_ms", "", Milliseconds{250}},
                                            {"names", "", Names{"a", "b"}},
                                            {"lines", "", Lines{{"c"}}},
                                            {"speed_bits_per_second", "", BitsPerSecond{1000}},
                                            {"choice", "", Choice{true, "up", "down"}},
                                            {"path", "", Path{"/a  b"}},
                                            {"a_date", "", Date{{0}}},
                                            {"a_time", "", Moment{1'714'551'753}},
                                            {"more", "", std::string("too"), Audience::Programs},
                                            {"less", "", std::string("not here"), Audience::People}}}});
    EXPECT_EQ(text, "{\n"
                    "  \"some\": {\n"
                    "    \"z_text\": \"two words\",\n"
                    "    \"yes\": true,\n"
                    "    \"count\": 2,\n"
                    "    \"memory_bytes\": 18446744073709551615,\n"
                    "    \"frequency_mhz\": 2599,\n"
                    "    \"load_percent\": 12.25,\n"
                    "    \"interval_ms\": 250,\n"
                    "    \"names\": [\n"
                    "      \"a\",\n"
                    "      \"b\"\n"
                    "    ],\n"
                    "    \"lines\": [\n"
                    "      \"c\"\n"
                    "    ],\n"
                    "    \"speed_bits_per_second\": 1000,\n"
                    "    \"choice\": true,\n"
                    "    \"path\": \"/a  b\",\n"
                    "    \"a_date\": \"1970-01-01T00:00:00Z\",\n"
                    "    \"a_time\": \"2024-05-01T08:22:33Z\",\n"
                    "    \"more\": \"too\"\n"
                    "  }\n"
                    "}\n");
}

TEST(JsonRenderer, ListsAreArrays) {
    const auto listOf = [](std::vector<Facts> records) {
        return nlohmann::json::parse(render({{"updates", "", Body(List{std::move(records), "", "", ""})}}))["updates"];
    };
    EXPECT_EQ(listOf({}), nlohmann::json::array());
    EXPECT_EQ(listOf({{{"name", "", std::string("a")}}, {{"name", "", std::nullopt}}}),
              nlohmann::json::parse(R"([{"name": "a"}, {"name": null}])"));
}

TEST(JsonRenderer, ListsAreWholeWhereTheTextStops) {
    List list{{{{"name", "", std::string("a")}}, {{"name", "", std::string("b")}}}, "", "", ""};
    list.mostForPeople = 1;
    EXPECT_EQ(nlohmann::json::parse(render({{"updates", "", Body(list)}}))["updates"].size(), 2U);
}

TEST(JsonRenderer, ASampleIsOneLineWithItsTimeFirst) {
    const std::vector<Section> sections{{"memory", "", Facts{{"used_bytes", "", Bytes{7}}}}, {"cpu", "", std::nullopt}};
    EXPECT_EQ(renderJsonLine(Moment{1'714'551'753}, sections),
              "{\"time\":\"2024-05-01T08:22:33Z\",\"memory\":{\"used_bytes\":7},\"cpu\":null}\n");
}

TEST(JsonRenderer, TextsAreEscapedToAsciiAndReadBackWhole) {
    const std::string model = "日本 \x1b[2J \x7f\u009b \"quoted\" \U0001f600";
    const std::string text = render({{"some", "", Facts{{"model", "", model}}}});
    for (const char character : text) {
        EXPECT_TRUE(character == '\n' || (character >= ' ' && character < '\x7f'));
    }
    EXPECT_EQ(nlohmann::json::parse(text)["some"]["model"], model);
}

} // namespace qk::info
