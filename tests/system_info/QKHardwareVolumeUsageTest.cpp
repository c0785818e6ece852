// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareVolumeUsage.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/services/ResourceKeys.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace qk {
namespace {

using namespace platform;

class QKHardwareVolumeUsageTest : public testing::Test {
protected:
    // A plain fixed volume, with some values replaced.
    static NSDictionary volume(const std::vector<NSDictionary::Entry>& replaced = {}) {
        NSMutableDictionary values(NSDictionary{{NSURLVolumeNameKey, "Disk"},
                                                {NSURLVolumeIsInternalKey, true},
                                                {NSURLVolumeIsEjectableKey, false},
                                                {NSURLVolumeIsRemovableKey, false},
                                                {NSURLVolumeTotalCapacityKey, 1000},
                                                {NSURLVolumeAvailableCapacityKey, 400}});
        for (const auto& [key, value] : replaced) {
            values.setObject(value, key);
        }
        return values.copy();
    }

    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& each : QKHardwareVolumeUsage::collectVolumesUsageData()) {
            found.push_back(each.name.utf8Lossy());
        }
        return found;
    }

    memory::Machine machine;
    memory::ScopedMachine installed{machine};
};

TEST_F(QKHardwareVolumeUsageTest, AMachineWithoutVolumesGivesAnEmptyList) {
    EXPECT_TRUE(QKHardwareVolumeUsage::collectVolumesUsageData().empty());
}

TEST_F(QKHardwareVolumeUsageTest, NothingGivesNothing) {
    EXPECT_FALSE(QKHardwareVolumeUsageData::initWithResourceValues(std::nullopt).has_value());
}

TEST_F(QKHardwareVolumeUsageTest, NoValuesGiveAVolumeThatIsNotKept) {
    const auto empty = QKHardwareVolumeUsageData::initWithResourceValues(NSDictionary());
    ASSERT_TRUE(empty.has_value());
    EXPECT_EQ(empty->name, "");
    EXPECT_EQ(empty->totalCapacity, 0U);
    EXPECT_FALSE(empty->isInternal || empty->isEjectable || empty->isRemoveable || empty->isRemountable);
    EXPECT_FALSE(QKHardwareVolumeUsage::isValidVolumeUsageData(*empty));
}

TEST_F(QKHardwareVolumeUsageTest, ReadsItsSevenValues) {
    const auto data = QKHardwareVolumeUsageData::initWithResourceValues(
        volume({{NSURLVolumeIsEjectableKey, true},
                {NSURLVolumeIsRemovableKey, 2},
                {NSURLVolumeURLForRemountingKey, *NSURL::URLWithString("smb://host/share")}}));
    ASSERT_TRUE(data.has_value());
    EXPECT_EQ(data->name, "Disk");
    EXPECT_TRUE(data->isInternal);
    EXPECT_TRUE(data->isEjectable);
    EXPECT_TRUE(data->isRemoveable);
    EXPECT_TRUE(data->isRemountable);
    EXPECT_EQ(data->totalCapacity, 1000U);
    EXPECT_EQ(data->freeCapacity, 400U);
    EXPECT_EQ(data->usedCapacity, 0U);
}

TEST_F(QKHardwareVolumeUsageTest, TheNullMarkerIsNoFlagAndNoCapacity) {
    const auto data = QKHardwareVolumeUsageData::initWithResourceValues(
        volume({{NSURLVolumeIsInternalKey, NSNull{}}, {NSURLVolumeTotalCapacityKey, NSNull{}}}));
    EXPECT_FALSE(data->isInternal);
    EXPECT_EQ(data->totalCapacity, 0U);
}

TEST_F(QKHardwareVolumeUsageTest, NegativeCapacitiesAreReadUnsigned) {
    const auto data = QKHardwareVolumeUsageData::initWithResourceValues(volume({{NSURLVolumeTotalCapacityKey, -1}}));
    EXPECT_EQ(data->totalCapacity, std::numeric_limits<std::uint64_t>::max());
    EXPECT_TRUE(QKHardwareVolumeUsage::isValidVolumeUsageData(*data));
}

TEST_F(QKHardwareVolumeUsageTest, ListsVolumesInTheSystemsOrder) {
    machine.fileManager.addVolume("/", volume({{NSURLVolumeNameKey, "B"}}));
    machine.fileManager.addVolume("/data", volume({{NSURLVolumeNameKey, "A"}}));
    EXPECT_EQ(names(), (std::vector<std::string>{"B", "A"}));
}

TEST_F(QKHardwareVolumeUsageTest, LeavesOutWhatIsNotFixedStorage) {
    machine.fileManager.addVolume("/image", volume({{NSURLVolumeIsEjectableKey, true}}));
    machine.fileManager.addVolume("/stick", volume({{NSURLVolumeIsRemovableKey, true}}));
    machine.fileManager.addVolume("/share",
                                  volume({{NSURLVolumeURLForRemountingKey, *NSURL::URLWithString("nfs://host/path")}}));
    machine.fileManager.addVolume("/empty", volume({{NSURLVolumeTotalCapacityKey, 0}}));
    machine.fileManager.addVolume("/hidden", volume(), true);
    machine.fileManager.addUnreadableVolume("/gone");
    EXPECT_TRUE(names().empty());
}

TEST_F(QKHardwareVolumeUsageTest, KeepsAnExternalDiskThatIsFixed) {
    machine.fileManager.addVolume("/disk", volume({{NSURLVolumeIsInternalKey, false}}));
    EXPECT_EQ(names(), std::vector<std::string>{"Disk"});
}

TEST_F(QKHardwareVolumeUsageTest, AVolumeWithoutANameIsListedWithTheEmptyOne) {
    machine.fileManager.addVolume("/", NSDictionary{{NSURLVolumeTotalCapacityKey, 5}});
    EXPECT_EQ(names(), std::vector<std::string>{""});
}

TEST_F(QKHardwareVolumeUsageTest, TheUsedCapacityIsNeverComputed) {
    machine.fileManager.addVolume("/", volume());
    EXPECT_EQ(QKHardwareVolumeUsage::collectVolumesUsageData().at(0).usedCapacity, 0U);
}

} // namespace
} // namespace qk
