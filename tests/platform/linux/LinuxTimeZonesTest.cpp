// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxTimeZones.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"
#include "tests/platform/values/ZoneBytes.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace qk::platform {
namespace {

using tests::environment;
using tests::TemporaryFolder;
using tests::ZoneBytes;

// A machine with two zones: Europe/Berlin, and Asia/Kolkata with one offset only.
struct Place {
    TemporaryFolder folder;

    Place() {
        folder.write("usr/share/zoneinfo/Europe/Berlin", ZoneBytes::berlin().version2());
        folder.write("usr/share/zoneinfo/Asia/Kolkata", kolkata());
        folder.write("usr/share/zoneinfo/tzdata.zi", "no zone");
        folder.write("secret", kolkata());
        std::filesystem::create_directories(folder.path("etc"));
    }

    static std::string kolkata() {
        ZoneBytes bytes;
        bytes.times = {{19800, false, 0}};
        bytes.names = std::string("IST\0", 4);
        bytes.footer = "IST-5:30";
        return bytes.version2();
    }

    [[nodiscard]] LinuxTimeZones zones(const std::map<std::string, std::string>& variables = {}) const {
        return LinuxTimeZones(LinuxRoot(folder.path()), environment(variables));
    }

    void link(const std::string& target) const {
        std::filesystem::remove(folder.path("etc/localtime"));
        std::filesystem::create_symlink(target, folder.path("etc/localtime"));
    }

    // Name, abbreviation and offset of the machine's own zone in 1970.
    [[nodiscard]] std::string system(const std::map<std::string, std::string>& variables = {}) const {
        const NSTimeZone zone = zones(variables).systemTimeZone();
        const NSDate date = NSDate::dateWithTimeIntervalSince1970(0);
        return zone.name().utf8Lossy() + " " + zone.abbreviationForDate(date).value_or("none").utf8Lossy() + " " +
               std::to_string(zone.secondsFromGMTForDate(date));
    }
};

TEST(LinuxTimeZones, NamesThatNobodyKnowsAreNoZone) {
    for (const char* const name : {"", "Europe/Nowhere", "Europe", "tzdata.zi", "utc"}) {
        EXPECT_EQ(Place().zones().timeZoneWithName(text(name)), std::nullopt) << name;
    }
    EXPECT_EQ(Place().zones().timeZoneWithName(NSString(u"\xD800")), std::nullopt);
    EXPECT_EQ(Place().zones().timeZoneWithName(NSString(std::u16string_view(u"Asia/Kolkata\0", 13))), std::nullopt);
}

TEST(LinuxTimeZones, NamesThatLeadElsewhereAreRefused) {
    const Place place;
    for (const std::string& name :
         {std::string("../../../secret"), std::string("Europe/../../../../secret"), std::string("/secret"),
          std::string("//usr/share/zoneinfo/Asia/Kolkata"), std::string(".."), place.folder.path("secret")}) {
        EXPECT_EQ(place.zones().timeZoneWithName(text(name)), std::nullopt) << name;
    }
}

TEST(LinuxTimeZones, ZonesAreReadByName) {
    const auto zone = Place().zones().timeZoneWithName("Europe/Berlin");
    ASSERT_TRUE(zone.has_value());
    EXPECT_EQ(zone->name(), "Europe/Berlin");
    EXPECT_EQ(zone->abbreviationForDate(NSDate::dateWithTimeIntervalSince1970(1459040400)), "CEST");
}

TEST(LinuxTimeZones, UTCIsAlwaysKnown) {
    EXPECT_EQ(LinuxTimeZones(LinuxRoot("/nonexistent"), environment({})).timeZoneWithName("UTC"), NSTimeZone::UTC());
}

TEST(LinuxTimeZones, MachineThatIsSetToNoneIsInUTC) {
    EXPECT_EQ(Place().system(), "UTC UTC 0");
}

TEST(LinuxTimeZones, LinkTellsTheName) {
    const Place place;
    place.link("/usr/share/zoneinfo/Europe/Berlin");
    EXPECT_EQ(place.system(), "Europe/Berlin CET 3600");
    place.link("../usr/share/zoneinfo/Asia/Kolkata");
    EXPECT_EQ(place.system(), "Asia/Kolkata IST 19800");
    place.link("/usr/share/zoneinfo/UTC");
    EXPECT_EQ(place.system(), "UTC UTC 0");
}

TEST(LinuxTimeZones, FileWithoutANameHasTheOneOfTimezone) {
    const Place place;
    place.folder.write("etc/localtime", Place::kolkata());
    EXPECT_EQ(place.system(), "Local IST 19800");
    place.folder.write("etc/timezone", "Asia/Calcutta\n");
    EXPECT_EQ(place.system(), "Asia/Calcutta IST 19800");
    place.folder.write("etc/localtime", "no zone");
    EXPECT_EQ(place.system(), "UTC UTC 0");
    place.folder.write("etc/timezone", " Europe/Berlin \n");
    EXPECT_EQ(place.system(), "Europe/Berlin CET 3600");
}

TEST(LinuxTimeZones, VariableGoesFirst) {
    const Place place;
    place.link("/usr/share/zoneinfo/Europe/Berlin");
    EXPECT_EQ(place.system({{"TZ", "Asia/Kolkata"}}), "Asia/Kolkata IST 19800");
    EXPECT_EQ(place.system({{"TZ", ":Asia/Kolkata"}}), "Asia/Kolkata IST 19800");
    EXPECT_EQ(place.system({{"TZ", "EST5EDT"}}), "EST5EDT EST -18000");
    EXPECT_EQ(place.system({{"TZ", "<+03>-3"}}), "<+03>-3 +03 10800");
    EXPECT_EQ(place.system({{"TZ", "/etc/localtime"}}), "Europe/Berlin CET 3600");
    EXPECT_EQ(place.system({{"TZ", ":/usr/share/zoneinfo/Asia/Kolkata"}}), "Asia/Kolkata IST 19800");
    EXPECT_EQ(place.system({{"TZ", "/secret"}}), "/secret IST 19800");
}

TEST(LinuxTimeZones, VariableThatMeansNothingIsUTC) {
    const Place place;
    place.link("/usr/share/zoneinfo/Europe/Berlin");
    for (const char* const value : {"", ":", "Nowhere", "../secret", "/missing", "EST5EDT,"}) {
        EXPECT_EQ(place.system({{"TZ", value}}), "UTC UTC 0") << value;
    }
}

} // namespace
} // namespace qk::platform
