// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/TextRenderer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace qk::info {

namespace {

std::string render(const std::vector<Section>& sections, const TextStyle& style = {}) {
    return renderText(sections, style);
}

Section facts(Facts content) {
    return {"some", "Some", Body(std::move(content))};
}

Section updatesOf(std::vector<Facts> records) {
    return {"updates", "Updates", Body(List{std::move(records), "Up to date.", "update", "updates"})};
}

Facts update(const std::string& name, const std::string& version, std::optional<Content> size) {
    return {{"name", "Name", name},
            {"version", "Version", version},
            {"description", "Description", std::string("for programs alone"), Audience::Programs},
            {"size", "Size", std::move(size)},
            {"restart", "Restart", false, Audience::People}};
}

std::size_t widestLine(const std::string& text) {
    std::size_t widest = 0;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        EXPECT_FALSE(line.ends_with(' ')) << line;
        widest = std::max(widest, displayWidth(NSString::fromUTF8Lossy(line).utf32Lossy()));
    }
    return widest;
}

} // namespace

TEST(TextRenderer, AnAbsentFactSaysSo) {
    EXPECT_EQ(render({facts({{"model", "Model", std::nullopt}})}), "Some\n  Model  not reported by this system\n");
}

TEST(TextRenderer, AnAbsentSectionSaysSo) {
    EXPECT_EQ(render({{"updates", "Updates", std::nullopt}}), "Updates\n  not reported by this system\n");
}

TEST(TextRenderer, NothingIsNothing) {
    EXPECT_EQ(render({}), "");
}

TEST(TextRenderer, EveryKindHasItsWords) {
    EXPECT_EQ(render({facts({{"a", "Text", std::string("two words")},
                             {"b", "Yes", true},
                             {"c", "No", false},
                             {"d", "Count", Count{2}},
                             {"e", "Bytes", Bytes{4096}},
                             {"f", "Megahertz", Megahertz{800}},
                             {"g", "Percent", Percent{12.34}},
                             {"h", "Time", Milliseconds{250}},
                             {"i", "Names", Names{"a b", "c"}},
                             {"j", "None", Names{}}})}),
              "Some\n"
              "  Text       two words\n"
              "  Yes        yes\n"
              "  No         no\n"
              "  Count      2\n"
              "  Bytes      4.0 KiB (4096 bytes)\n"
              "  Megahertz  800 MHz\n"
              "  Percent    12.3%\n"
              "  Time       250 ms\n"
              "  Names      a b, c\n"
              "  None       none\n");
}

TEST(TextRenderer, SectionsShareOneColumnOfValues) {
    EXPECT_EQ(render({facts({{"a", "A", Count{1}}}), facts({{"b", "Longer", Count{2}}})}),
              "Some\n  A       1\n\nSome\n  Longer  2\n");
}

TEST(TextRenderer, LongValuesContinueBelowThemselves) {
    EXPECT_EQ(
        render({facts({{"a", "Kernel", std::string("Linux version 6.1 built somewhere by somebody")}})}, TextStyle{36}),
        "Some\n"
        "  Kernel  Linux version 6.1 built\n"
        "          somewhere by somebody\n");
}

TEST(TextRenderer, ANarrowTerminalLeavesRoomForValues) {
    EXPECT_EQ(render({facts({{"a", "A rather long label", std::string("abcdefghijklmnopqrstuvwxyz")}})}, TextStyle{10}),
              "Some\n"
              "  A rather long label  abcdefghijklmnopqrstuvwx\n"
              "                       yz\n");
}

TEST(TextRenderer, ValuesCannotSteerTheTerminal) {
    const std::string text = render({facts({{"a", "Model", std::string("\x1b[2J\x1b]0;x\x07\nUpdates\n  none")}})});
    EXPECT_EQ(text, "Some\n  Model  \\x1B[2J\\x1B]0;x\\x07 Updates none\n");
}

TEST(TextRenderer, AnEmptyListSaysWhatThatMeans) {
    EXPECT_EQ(render({updatesOf({})}), "Updates\n  Up to date.\n");
}

TEST(TextRenderer, AListIsATableWithItsCount) {
    EXPECT_EQ(render({updatesOf({update("openssl", "3.0.15", std::string("1432K"))})}),
              "Updates\n"
              "  Name     Version  Size   Restart\n"
              "  openssl  3.0.15   1432K  no\n"
              "  1 update.\n");
    EXPECT_EQ(render({updatesOf({update("a", "1", std::string("10K")), update("日本", "2.0", std::nullopt)})}),
              "Updates\n"
              "  Name  Version  Size          Restart\n"
              "  a     1        10K           no\n"
              "  日本  2.0      not reported  no\n"
              "  2 updates.\n");
}

TEST(TextRenderer, ALongListStopsWhereItIsToldTo) {
    List list{{}, "Up to date.", "update", "updates"};
    for (const std::string name : {"a", "b", "c"}) {
        list.records.push_back({{"name", "Name", name}});
    }
    const auto shown = [&](std::size_t most) {
        list.mostForPeople = most;
        return render({Section{"updates", "Updates", Body(list)}});
    };
    EXPECT_EQ(shown(4), "Updates\n  Name\n  a\n  b\n  c\n  3 updates.\n");
    EXPECT_EQ(shown(3), shown(4));
    EXPECT_EQ(shown(1), "Updates\n  Name\n  a\n  and 2 more: qkinfo updates\n");
}

TEST(TextRenderer, TablesHaveRoomForOneFormOfANumberOnly) {
    EXPECT_EQ(render({Section{"volumes", "Volumes",
                              Body(List{{{{"total_bytes", "Total", Bytes{4096}}}}, "", "volume", ""})}}),
              "Volumes\n  Total\n  4.0 KiB\n  1 volume.\n");
}

TEST(TextRenderer, WideTablesWrapInsideTheirColumns) {
    const std::string name = "libapache2-mod-security-with-a-name-that-goes-on";
    const std::string text = render({updatesOf({update(name, std::string(60, '9'), std::string("10K"))})});
    EXPECT_EQ(widestLine(text), 80U);
    std::string squeezed = text;
    std::erase_if(squeezed, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_THAT(squeezed, testing::HasSubstr("libapache2-mod-security-with"));
    EXPECT_THAT(text, testing::HasSubstr("\n  1 update.\n"));
}

TEST(TextRenderer, FitsAnyWidthFromFiftyOn) {
    const std::vector<Section> sections{
        facts(
            {{"a", "Kernel", std::string("Linux version 6.1.0-26-amd64 (debian-kernel@lists.debian.org) 日本語日本語")},
             {"b", "Physical processors", std::nullopt}}),
        updatesOf({update("linux-image-amd64-signed-template", "6.1.112-1~deb12u1", std::string("70000K"))})};
    for (std::size_t width = 50; width <= 200; ++width) {
        EXPECT_LE(widestLine(render(sections, TextStyle{width})), width);
    }
}

TEST(TextRenderer, ColorIsUsedOnlyWhereItIsAskedFor) {
    const std::vector<Section> sections{facts({{"a", "Model", std::nullopt}, {"b", "Cores", Count{2}}}),
                                        updatesOf({update("a", "1", std::nullopt)})};
    const std::string colored = render(sections, TextStyle{80, true});
    const std::string plain = render(sections, TextStyle{80, false});
    EXPECT_THAT(plain, testing::Not(testing::HasSubstr("\x1b")));
    EXPECT_THAT(colored, testing::StartsWith("\x1b[1mSome\x1b[0m\n  \x1b[36mModel\x1b[0m  \x1b[2mnot reported"));

    std::string stripped;
    for (std::size_t index = 0; index < colored.size(); ++index) {
        if (colored[index] == '\x1b') {
            index = colored.find('m', index);
        } else {
            stripped += colored[index];
        }
    }
    EXPECT_EQ(stripped, plain);
}

TEST(TextRenderer, LinesStandBelowEachOther) {
    EXPECT_EQ(render({facts({{"a", "Servers", Lines{{"one", "two words"}}}, {"b", "None", Lines{}}})}, TextStyle{30}),
              "Some\n"
              "  Servers  one\n"
              "           two words\n"
              "  None     none\n");
    EXPECT_EQ(render({updatesOf({update("a", "1", Lines{{"x", "y"}})})}), "Updates\n"
                                                                          "  Name  Version  Size  Restart\n"
                                                                          "  a     1        x, y  no\n"
                                                                          "  1 update.\n");
}

TEST(TextRenderer, ChoicesHaveWordsAndSpeedsUnits) {
    EXPECT_EQ(render({facts({{"a", "Link", Choice{true, "up", "down"}},
                             {"b", "Power", Choice{false, "on", "off"}},
                             {"c", "Speed", BitsPerSecond{1'000'000'000}}})}),
              "Some\n  Link   up\n  Power  off\n  Speed  1 Gbit/s\n");
}

TEST(TextRenderer, AListCanBeBlocks) {
    List list{{}, "None.", "thing", "things"};
    list.form = ListForm::Blocks;
    const auto shown = [&](const TextStyle& style = {}) {
        return render({Section{"things", "Things", Body(list)}}, style);
    };
    EXPECT_EQ(shown(), "Things\n  None.\n");
    list.records = {{{"name", "Name", std::string("first")}, {"size", "Size", Count{1}}},
                    {{"name", "Name", std::nullopt},
                     {"size", "Size", std::nullopt},
                     {"id", "A very long label", Count{7}, Audience::Programs}}};
    EXPECT_EQ(shown(), "Things\n"
                       "  first\n"
                       "    Size  1\n"
                       "\n"
                       "  not reported by this system\n"
                       "    Size  not reported by this system\n"
                       "\n"
                       "  2 things.\n");
    EXPECT_THAT(shown(TextStyle{80, true}), testing::HasSubstr("  \x1b[1mfirst\x1b[0m\n    \x1b[36mSize\x1b[0m  1\n"));
    list.mostForPeople = 1;
    EXPECT_EQ(shown(), "Things\n  first\n    Size  1\n\n  and 1 more: qkinfo things\n");
}

TEST(TextRenderer, PathsKeepTheirBlanksAndGoWhereTheyAreTold) {
    const std::string path = "/a  b/" + std::string(40, 'x') + "/end";
    const auto shown = [&](PathStyle paths) {
        const List list{{{{"kind", "Kind", std::string("file")}, {"path", "Path", Path{path}}}}, "", "file", ""};
        return render({Section{"files", "Files", Body(list)}}, TextStyle{40, false, {}, paths});
    };
    EXPECT_EQ(shown(PathStyle::Whole), "Files\n  Kind  Path\n  file  " + path + "\n  1 file.\n");
    EXPECT_EQ(shown(PathStyle::Elided), "Files\n"
                                        "  Kind  Path\n"
                                        "  file  /a  b/xxxxxxxx...xxxxxxxxxxx/end\n"
                                        "  1 file.\n");
    EXPECT_EQ(widestLine(shown(PathStyle::Wrapped)), 40U);
    EXPECT_EQ(render({facts({{"path", "Path", Path{"/a  b\n"}}})}), "Some\n  Path  /a  b\\x0A\n");
}

} // namespace qk::info
