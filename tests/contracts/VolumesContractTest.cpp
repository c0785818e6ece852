// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/ResourceKeys.h"

#include "tests/contracts/Contract.h"

#include <gmock/gmock.h>

#include <optional>
#include <vector>

namespace qk::tests {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::IsEmpty;

class VolumesContract : public Contract {
protected:
    [[nodiscard]] NSDictionary values(const NSURL& url) {
        auto found = machine_.fileManager->resourceValuesForKeys(
            url, {NSURLVolumeNameKey, NSURLVolumeIsInternalKey, NSURLVolumeIsEjectableKey, NSURLVolumeIsRemovableKey,
                  NSURLVolumeURLForRemountingKey, NSURLVolumeTotalCapacityKey, NSURLVolumeAvailableCapacityKey});
        EXPECT_TRUE(found.has_value());
        return found.value_or(NSDictionary());
    }
    [[nodiscard]] std::vector<NSURL> urls() { return machine_.fileManager->mountedVolumeURLs(true); }
    FileManager& files() { return *machine_.fileManager; }

private:
    Services machine_ = subject().described();
};
INSTANTIATE_TEST_SUITE_P(Of, VolumesContract, testing::ValuesIn(adapters()), adapterName);

template <typename T>
std::optional<T> valueOf(const NSDictionary& values, const NSString& key) {
    const T* value = values.get<T>(key);
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

TEST_P(VolumesContract, AMachineMayHaveNone) {
    const auto machine = subject().silent();
    EXPECT_THAT(machine.fileManager->mountedVolumeURLs(true), IsEmpty());
    const NSURL root = urls().at(0);
    EXPECT_EQ(machine.fileManager->resourceValuesForKeys(root, {NSURLVolumeNameKey}), std::nullopt);
}

TEST_P(VolumesContract, URLsAreThoseOfFolders) {
    std::vector<NSString> texts;
    for (const NSURL& url : urls()) {
        texts.push_back(url.absoluteString());
    }
    EXPECT_THAT(texts, ElementsAre(NSString("file:///"), NSString("file:///media/stick/"), NSString("file:///net/")));
}

TEST_P(VolumesContract, DisksTellWhatTheyAre) {
    const NSDictionary system = values(urls().at(0));
    EXPECT_EQ(valueOf<NSString>(system, NSURLVolumeNameKey), "System");
    EXPECT_EQ(system.objectForKey(NSURLVolumeURLForRemountingKey), nullptr);
    const NSDictionary stick = values(urls().at(1));
    EXPECT_EQ(valueOf<NSString>(stick, NSURLVolumeNameKey), "stick");
    for (const auto& [volume, isInternal, isRemovable] : {std::tuple{system, true, false}, {stick, false, true}}) {
        EXPECT_EQ(valueOf<NSNumber>(volume, NSURLVolumeIsInternalKey)->boolValue(), isInternal);
        EXPECT_EQ(valueOf<NSNumber>(volume, NSURLVolumeIsRemovableKey)->boolValue(), isRemovable);
        EXPECT_FALSE(valueOf<NSNumber>(volume, NSURLVolumeIsEjectableKey)->boolValue());
        const auto total = valueOf<NSNumber>(volume, NSURLVolumeTotalCapacityKey)->unsignedIntegerValue();
        EXPECT_GT(total, 0U);
        EXPECT_LE(valueOf<NSNumber>(volume, NSURLVolumeAvailableCapacityKey)->unsignedIntegerValue(), total);
    }
}

TEST_P(VolumesContract, AVolumeOfAnotherMachineHasAURLAndNoCapacities) {
    const NSDictionary remote = values(urls().at(2));
    ASSERT_NE(remote.get<NSURL>(NSURLVolumeURLForRemountingKey), nullptr);
    EXPECT_EQ(remote.get<NSURL>(NSURLVolumeURLForRemountingKey)->absoluteString(), "nfs://server/export");
    EXPECT_EQ(remote.objectForKey(NSURLVolumeTotalCapacityKey), nullptr);
    EXPECT_EQ(remote.objectForKey(NSURLVolumeAvailableCapacityKey), nullptr);
}

TEST_P(VolumesContract, OnlyTheKeysThatWereAskedForAreAnswered) {
    const NSURL root = urls().at(0);
    EXPECT_EQ(files().resourceValuesForKeys(root, {}), NSDictionary());
    EXPECT_EQ(files().resourceValuesForKeys(root, {"NSURLNoSuchKey", NSURLVolumeNameKey}),
              (NSDictionary{{NSURLVolumeNameKey, "System"}}));
}

TEST_P(VolumesContract, WhatIsNoVolumeCannotBeAsked) {
    const NSURL none = NSURL::URLWithString("file:///no/such/volume/").value();
    EXPECT_EQ(files().resourceValuesForKeys(none, {NSURLVolumeNameKey}), std::nullopt);
}

} // namespace
} // namespace qk::tests
