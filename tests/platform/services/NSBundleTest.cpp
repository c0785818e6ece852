// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/NSBundle.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace qk {
namespace {

using platform::memory::Machine;
using platform::memory::ScopedMachine;

/// Reads "(key)=(text)" as a table of one entry, refuses everything else, and counts.
class OneEntryLists final : public platform::PropertyListSerialization {
public:
    [[nodiscard]] std::optional<Value>
    propertyListWithData(const NSData& data, platform::NSPropertyListMutabilityOptions /*options*/) const override {
        ++reads;
        const std::string_view line = data.view();
        const std::size_t sign = line.find('=');
        if (sign == std::string_view::npos) {
            return line == "array" ? std::optional<Value>(NSArray{"a"}) : std::nullopt;
        }
        return NSDictionary{{text(line.substr(0, sign)), text(line.substr(sign + 1))}};
    }
    [[nodiscard]] std::optional<NSData> dataWithPropertyList(const Value& /*value*/,
                                                             platform::NSPropertyListFormat /*format*/) const override {
        return std::nullopt;
    }

    mutable std::atomic<int> reads = 0;
};

class Bundle : public testing::Test {
protected:
    Bundle() { services.propertyLists = lists; }

    void addTable(const NSString& path, const NSDictionary& texts) { machine.fileManager.addPropertyList(path, texts); }
    [[nodiscard]] std::shared_ptr<NSBundle> open(const NSString& path) const {
        return NSBundle::bundleWithPath(path, services);
    }

    Machine machine;
    std::shared_ptr<OneEntryLists> lists = std::make_shared<OneEntryLists>();
    platform::Services services = *machine.services();
};

NSString lookUp(const NSBundle& bundle, const NSString& key) {
    return bundle.localizedStringForKey(key, std::nullopt, std::nullopt);
}

TEST_F(Bundle, ThereIsNoneWithoutAFolder) {
    machine.fileManager.addFile("/app/file");
    EXPECT_EQ(open("/app/missing"), nullptr);
    EXPECT_EQ(open("/app/file"), nullptr);
    EXPECT_EQ(open(""), nullptr);
}

TEST_F(Bundle, IsOpenedOnTheInstalledMachine) {
    machine.fileManager.addDirectory("/app/Empty.bundle");
    EXPECT_EQ(NSBundle::bundleWithPath("/app/Empty.bundle"), nullptr);
    const ScopedMachine installed(machine);
    EXPECT_NE(NSBundle::bundleWithPath("/app/Empty.bundle"), nullptr);
}

TEST_F(Bundle, GoesOnAskingTheMachineThatItWasMadeOn) {
    addTable("/app/A.bundle/Localizable.strings", {{"key", "text"}});
    std::shared_ptr<NSBundle> bundle;
    {
        const ScopedMachine installed(machine);
        bundle = NSBundle::bundleWithPath("/app/A.bundle");
    }
    EXPECT_EQ(lookUp(*bundle, "key"), "text");
}

TEST_F(Bundle, HasAPathWithoutATrailingSlash) {
    machine.fileManager.addDirectory("/app/Empty.bundle");
    EXPECT_EQ(open("/app/Empty.bundle/")->bundlePath(), "/app/Empty.bundle");
    EXPECT_EQ(open("/app/Empty.bundle/")->valueForKey("bundlePath"), Value("/app/Empty.bundle"));
}

TEST_F(Bundle, ResourcesLieInTheFirstFolderThatIsThere) {
    for (const NSString& folder : {NSString("/a"), NSString("/a/Resources"), NSString("/a/Contents/Resources")}) {
        machine.fileManager.addFile(folder + "/note.txt");
        EXPECT_EQ(open("/a")->pathForResource("note", "txt"), folder + "/note.txt");
    }
}

TEST_F(Bundle, AFileNamedResourcesHoldsNoResources) {
    machine.fileManager.addFile("/a/Resources");
    machine.fileManager.addFile("/a/note.txt");
    EXPECT_EQ(open("/a")->pathForResource("note", "txt"), NSString("/a/note.txt"));
}

TEST_F(Bundle, ResourcesThatAreMissingHaveNoPath) {
    machine.fileManager.addFile("/a/note");
    const auto bundle = open("/a");
    EXPECT_EQ(bundle->pathForResource("note", "txt"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("Note", ""), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("", "txt"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("", ""), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("note", ""), NSString("/a/note"));
}

TEST_F(Bundle, LanguagesThatAreMissingHaveNoBundle) {
    machine.fileManager.addDirectory("/a/de.lproj");
    machine.fileManager.addDirectory("/a/de.lproj/en.lproj");
    machine.fileManager.addFile("/a/es.lproj");
    const auto bundle = open("/a");
    for (const NSString& name : {NSString("fr"), NSString("es"), NSString(""), NSString("DE"), NSString("de.lproj"),
                                 NSString("../a/de"), NSString("de.lproj/en"), NSString("de/"), NSString(u"\xD800")}) {
        EXPECT_EQ(bundle->bundleForLanguage(name), nullptr) << name.utf8Lossy();
        EXPECT_EQ(bundle->bundleForLanguage(name), nullptr) << name.utf8Lossy();
    }
}

TEST_F(Bundle, ALanguageIsTheSameObjectEachTime) {
    machine.fileManager.addDirectory("/a/Resources/de.lproj");
    const auto bundle = open("/a");
    const auto german = bundle->bundleForLanguage("de");
    ASSERT_NE(german, nullptr);
    EXPECT_EQ(german->bundlePath(), "/a/Resources/de.lproj");
    EXPECT_EQ(bundle->bundleForLanguage("de"), german);
}

TEST_F(Bundle, ALanguageOutlivesItsBundle) {
    addTable("/a/de.lproj/Localizable.strings", {{"key", "Text"}});
    const auto german = open("/a")->bundleForLanguage("de");
    EXPECT_EQ(lookUp(*german, "key"), "Text");
}

TEST_F(Bundle, KeepsThatSomethingIsMissing) {
    machine.fileManager.addDirectory("/a");
    const auto bundle = open("/a");
    EXPECT_EQ(bundle->bundleForLanguage("de"), nullptr);
    EXPECT_EQ(lookUp(*bundle, "key"), "key");
    machine.fileManager.addDirectory("/a/de.lproj");
    addTable("/a/Localizable.strings", {{"key", "text"}});
    EXPECT_EQ(bundle->bundleForLanguage("de"), nullptr);
    EXPECT_EQ(lookUp(*bundle, "key"), "key");
}

TEST_F(Bundle, NamesWithoutEndAreAllMissing) {
    machine.fileManager.addDirectory("/a/de.lproj");
    addTable("/a/Last.strings", {{"key", "text"}});
    const auto bundle = open("/a");
    for (int number = 0; number < 100; ++number) {
        const NSString name = NSString::fromInteger(number);
        EXPECT_EQ(bundle->bundleForLanguage(name), nullptr);
        EXPECT_EQ(bundle->localizedStringForKey("key", "value", name), "value");
    }
    EXPECT_NE(bundle->bundleForLanguage("de"), nullptr);
    EXPECT_EQ(bundle->localizedStringForKey("key", "value", "Last"), "text");
    EXPECT_EQ(lookUp(*bundle, "key"), "key");
}

TEST_F(Bundle, AKeyThatIsMissingGivesTheValueOrItself) {
    machine.fileManager.addDirectory("/a");
    const auto bundle = open("/a");
    EXPECT_EQ(bundle->localizedStringForKey(std::nullopt, std::nullopt, std::nullopt), "");
    EXPECT_EQ(bundle->localizedStringForKey(std::nullopt, "value", std::nullopt), "value");
    EXPECT_EQ(bundle->localizedStringForKey("key", "value", std::nullopt), "value");
    EXPECT_EQ(bundle->localizedStringForKey("key", "", std::nullopt), "key");
    EXPECT_EQ(bundle->localizedStringForKey("key", std::nullopt, std::nullopt), "key");
    EXPECT_EQ(bundle->localizedStringForKey("", std::nullopt, std::nullopt), "");
}

TEST_F(Bundle, AKeyThatIsThereGivesItsTextAlsoAnEmptyOne) {
    addTable("/a/Localizable.strings", {{"key", "text"}, {"empty", ""}, {"", "no key"}});
    const auto bundle = open("/a");
    EXPECT_EQ(bundle->localizedStringForKey("key", "value", std::nullopt), "text");
    EXPECT_EQ(bundle->localizedStringForKey("key", "value", ""), "text");
    EXPECT_EQ(bundle->localizedStringForKey("key", "value", "Localizable"), "text");
    EXPECT_EQ(bundle->localizedStringForKey("empty", "value", std::nullopt), "");
    EXPECT_EQ(bundle->localizedStringForKey("", "value", std::nullopt), "no key");
}

TEST_F(Bundle, KeysAreComparedUnitByUnit) {
    addTable("/a/Localizable.strings", {{text("caf\u00E9"), "composed"}});
    const auto bundle = open("/a");
    EXPECT_EQ(lookUp(*bundle, text("caf\u00E9")), "composed");
    EXPECT_EQ(lookUp(*bundle, text("cafe\u0301")), text("cafe\u0301"));
    EXPECT_EQ(lookUp(*bundle, text("CAF\u00C9")), text("CAF\u00C9"));
}

TEST_F(Bundle, OtherTablesAreAskedByName) {
    addTable("/a/Localizable.strings", {{"key", "text"}});
    addTable("/a/Errors.strings", {{"key", "error"}});
    const auto bundle = open("/a");
    EXPECT_EQ(bundle->localizedStringForKey("key", std::nullopt, "Errors"), "error");
    EXPECT_EQ(bundle->localizedStringForKey("key", std::nullopt, "Missing"), "key");
    EXPECT_EQ(lookUp(*bundle, "key"), "text");
}

TEST_F(Bundle, AValueThatIsNoTextCountsAsMissing) {
    addTable("/a/Localizable.strings", {{"number", 7}, {"list", NSArray{"a"}}, {"null", NSNull()}, {"key", "text"}});
    const auto bundle = open("/a");
    EXPECT_EQ(lookUp(*bundle, "number"), "number");
    EXPECT_EQ(bundle->localizedStringForKey("list", "value", std::nullopt), "value");
    EXPECT_EQ(lookUp(*bundle, "null"), "null");
    EXPECT_EQ(lookUp(*bundle, "key"), "text");
}

TEST_F(Bundle, ATableThatIsDamagedIsEmptyAndReadOnce) {
    machine.fileManager.addFile("/a/Localizable.strings", NSData("damaged"));
    machine.fileManager.addFile("/a/Array.strings", NSData("array"));
    const auto bundle = open("/a");
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(lookUp(*bundle, "key"), "key");
        EXPECT_EQ(bundle->localizedStringForKey("key", std::nullopt, "Array"), "key");
    }
    EXPECT_EQ(lists->reads, 2);
}

TEST_F(Bundle, ATableIsReadOnceAndKept) {
    machine.fileManager.addFile("/a/Localizable.strings", NSData("key=text"));
    const auto bundle = open("/a");
    EXPECT_EQ(lists->reads, 0);
    EXPECT_EQ(lookUp(*bundle, "key"), "text");
    machine.fileManager.addFile("/a/Localizable.strings", NSData("key=other"));
    EXPECT_EQ(lookUp(*bundle, "key"), "text");
    EXPECT_EQ(bundle->localizedStringForKey("key", std::nullopt, "Localizable"), "text");
    EXPECT_EQ(lists->reads, 1);
    EXPECT_EQ(lookUp(*open("/a"), "key"), "other");
}

TEST_F(Bundle, AnUnreadableTableIsEmpty) {
    machine.fileManager.addFile("/a/Localizable.strings", NSData("key=text"));
    machine.fileManager.denyReading("/a/Localizable.strings");
    EXPECT_EQ(lookUp(*open("/a"), "key"), "key");
}

TEST_F(Bundle, TextsAreHandedOutWithoutCopying) {
    addTable("/a/Localizable.strings", {{"key", "text"}});
    const auto bundle = open("/a");
    EXPECT_EQ(lookUp(*bundle, "key").storage(), lookUp(*bundle, "key").storage());
}

TEST_F(Bundle, DescribesItself) {
    machine.fileManager.addDirectory("/a");
    const auto bundle = open("/a");
    EXPECT_EQ(bundle->classDescription().name(), "NSBundle");
    const std::array<std::optional<Value>, 3> arguments{Value("key"), std::nullopt, std::nullopt};
    EXPECT_EQ(bundle->performSelector("localizedStringForKey:value:table:", arguments), Value("key"));
}

} // namespace
} // namespace qk
