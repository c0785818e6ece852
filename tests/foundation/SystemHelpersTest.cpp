// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSData+Hash.h"
#include "QKFoundation/foundation/NSString+OpenAsURL.h"
#include "QKFoundation/foundation/NSString+UTIConformance.h"
#include "QKFoundation/foundation/NSTimeZone+UTCOffset.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace qk {
namespace {

using platform::LaunchServices;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

struct Opening {
    Machine machine;
    ScopedMachine installed{machine};

    [[nodiscard]] std::vector<NSString> opened() const {
        std::vector<NSString> texts;
        for (const NSURL& url : machine.launchServices.openedURLs()) {
            texts.push_back(url.absoluteString());
        }
        return texts;
    }
};

using Texts = std::vector<NSString>;

TEST(NSStringOpenAsURL, TextThatIsNoURLIsNotOpened) {
    const Opening test;
    test.machine.launchServices.setStatus(LaunchServices::noErr);
    EXPECT_FALSE(NSString_OpenAsURL::openURLString(""));
    EXPECT_FALSE(NSString_OpenAsURL::openURLString("http://h/a b"));
    EXPECT_FALSE(NSString_OpenAsURL::openAsURL(""));
    EXPECT_EQ(test.opened(), Texts());
}

TEST(NSStringOpenAsURL, TheSystemSaysWhetherItWasOpened) {
    const Opening test;
    EXPECT_FALSE(NSString_OpenAsURL::openURLString("http://h/"));
    test.machine.launchServices.setStatus(LaunchServices::noErr);
    EXPECT_TRUE(NSString_OpenAsURL::openURLString("http://h/"));
    test.machine.launchServices.setStatus(1);
    EXPECT_FALSE(NSString_OpenAsURL::openURLString("http://h/"));
    EXPECT_EQ(test.opened(), (Texts{"http://h/", "http://h/", "http://h/"}));
}

TEST(NSStringOpenAsURL, URLStringsAreOpenedAsTheyAre) {
    const Opening test;
    test.machine.launchServices.setStatus(LaunchServices::noErr);
    EXPECT_TRUE(NSString_OpenAsURL::openURLString("http://h/%2520?a=%23#f"));
    EXPECT_EQ(test.opened(), Texts{"http://h/%2520?a=%23#f"});
}

TEST(NSStringOpenAsURL, TextsAreUnescapedOnceAndEscapedAgain) {
    const struct {
        const char* given;
        const char* opened;
    } rows[] = {{"http://h/a%20b#x", "http://h/a%20b#x"},
                {"http://h/a b#x", "http://h/a%20b#x"},
                {"http://h/%2520", "http://h/%2520"},
                {"http://h/a%23b", "http://h/a#b"},
                {"http://h/a%2Fb%3Fc%26", "http://h/a/b?c&"},
                {"http://h/100%25", "http://h/100%25"},
                {"http://h/\u00E9", "http://h/%C3%A9"},
                {"http://h/%c3%a9", "http://h/%C3%A9"},
                {"http://h/a+b", "http://h/a+b"},
                {"http://h/[{|}]\"<>\\^`", "http://h/%5B%7B%7C%7D%5D%22%3C%3E%5C%5E%60"}};
    for (const auto& row : rows) {
        const Opening test;
        test.machine.launchServices.setStatus(LaunchServices::noErr);
        EXPECT_TRUE(NSString_OpenAsURL::openAsURL(text(row.given))) << row.given;
        EXPECT_EQ(test.opened(), Texts{text(row.opened)}) << row.given;
    }
}

TEST(NSStringOpenAsURL, TextsThatCannotBeUnescapedOrEscapedAreNotOpened) {
    const Opening test;
    test.machine.launchServices.setStatus(LaunchServices::noErr);
    for (const char* const given : {"http://h/100%", "http://h/%G0", "http://h/%FF", "http://h/%C3x%A9"}) {
        EXPECT_FALSE(NSString_OpenAsURL::openAsURL(text(given))) << given;
    }
    EXPECT_FALSE(NSString_OpenAsURL::openAsURL(NSString(u"http://h/\xD800")));
    EXPECT_FALSE(NSString_OpenAsURL::openAsURL("http://h/#a#b")) << "no URL has two";
    EXPECT_EQ(test.opened(), Texts());
}

TEST(NSStringUTIConformance, UnknownTypeConformsToItselfAlone) {
    const Machine machine;
    const ScopedMachine installed(machine);
    EXPECT_FALSE(NSString_UTIConformance::conformsToUTIType("org.example.unknown", "public.data"));
    EXPECT_TRUE(NSString_UTIConformance::conformsToUTIType("org.example.unknown", "ORG.example.Unknown"));
}

TEST(NSStringUTIConformance, TypeConformsOverSteps) {
    const Machine machine;
    machine.uniformTypes.declareType("public.png", {"public.image"});
    machine.uniformTypes.declareType("public.image", {"public.data", "public.content"});
    const ScopedMachine installed(machine);
    EXPECT_TRUE(NSString_UTIConformance::conformsToUTIType("public.png", "public.content"));
    EXPECT_FALSE(NSString_UTIConformance::conformsToUTIType("public.image", "public.png"));
}

NSString shown(const NSTimeZone& zone, double now = 0) {
    const Machine machine;
    machine.clock.setNow(NSDate::dateWithTimeIntervalSince1970(now));
    const ScopedMachine installed(machine);
    return NSTimeZone_UTCOffset::abbreviationAndOffset(zone);
}

TEST(NSTimeZoneUTCOffset, ZoneWithoutAbbreviationBeginsWithTheBlank) {
    EXPECT_EQ(shown(NSTimeZone::fixed("x", 19800, std::nullopt)), " (UTC+05:30)");
}

TEST(NSTimeZoneUTCOffset, AbbreviationAndOffset) {
    const struct {
        std::int64_t seconds;
        const char* text;
    } rows[] = {{3600, "A (UTC+01:00)"},  {-18000, "A (UTC-05:00)"}, {0, "A (UTC+00:00)"},  {-12600, "A (UTC-03:30)"},
                {-1800, "A (UTC-00:30)"}, {-59, "A (UTC-00:00)"},    {59, "A (UTC+00:00)"}, {360000, "A (UTC+100:00)"}};
    for (const auto& row : rows) {
        EXPECT_EQ(shown(NSTimeZone::fixed("x", row.seconds, NSString("A"))), text(row.text));
    }
}

TEST(NSTimeZoneUTCOffset, AnyOffsetIsShown) {
    EXPECT_EQ(shown(NSTimeZone::fixed("x", std::numeric_limits<std::int64_t>::min(), NSString("A"))),
              "A (UTC-2562047788015215:30)");
    EXPECT_EQ(shown(NSTimeZone::fixed("x", std::numeric_limits<std::int64_t>::max(), NSString("A"))),
              "A (UTC+2562047788015215:30)");
}

TEST(NSTimeZoneUTCOffset, ThePresentMomentDecides) {
    const NSTimeZone zone = NSTimeZone::timeZoneWithRule("x", "CET-1CEST,M3.5.0,M10.5.0/3").value();
    EXPECT_EQ(shown(zone, 1459040399), "CET (UTC+01:00)");
    EXPECT_EQ(shown(zone, 1459040400), "CEST (UTC+02:00)");
}

class FixedDigest final : public platform::CommonCrypto {
public:
    [[nodiscard]] std::optional<SHA1Digest> SHA1(std::span<const std::byte> bytes) const override {
        SHA1Digest digest{};
        for (std::size_t index = 0; index < digest.size(); ++index) {
            digest[index] = static_cast<std::byte>(index * 13 + bytes.size());
        }
        return digest;
    }
};

class NoDigest final : public platform::CommonCrypto {
public:
    [[nodiscard]] std::optional<SHA1Digest> SHA1(std::span<const std::byte> /*bytes*/) const override {
        return std::nullopt;
    }
};

TEST(NSDataHash, SystemWithoutCryptographyHasNoDigest) {
    platform::Services services = *Machine().services();
    services.crypto = std::make_shared<NoDigest>();
    EXPECT_EQ(internal::sha1(services, NSData("abc")), std::nullopt);
}

TEST(NSDataHash, DigestIsWrittenInLowerCaseDigits) {
    platform::Services services = *Machine().services();
    services.crypto = std::make_shared<FixedDigest>();
    EXPECT_EQ(internal::sha1(services, NSData()), "000d1a2734414e5b6875828f9ca9b6c3d0ddeaf7");
    EXPECT_EQ(internal::sha1(services, NSData("ab")), "020f1c293643505d6a7784919eabb8c5d2dfecf9");
}

} // namespace
} // namespace qk
