// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/FileEvents.h"

#include <gtest/gtest.h>

#include <linux/fanotify.h>
#include <sys/inotify.h>

#include <cstring>
#include <string>
#include <string_view>

namespace qk::platform::parse {
namespace {

// Bytes as the kernel writes them, put together piece by piece.
class Written {
public:
    template <typename T>
    Written& number(T value) {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
        return *this;
    }
    Written& text(std::string_view text, std::size_t size) {
        bytes_.append(text);
        bytes_.append(size - text.size(), '\0');
        return *this;
    }
    Written& add(const Written& other) {
        bytes_ += other.bytes_;
        return *this;
    }
    Written& cut(std::size_t count) {
        bytes_.resize(bytes_.size() - count);
        return *this;
    }
    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] std::span<const std::byte> bytes() const { return std::as_bytes(std::span(bytes_)); }

private:
    std::string bytes_;
};

Written inotify(int watch, std::uint32_t mask, std::uint32_t cookie, std::string_view name, std::uint32_t length) {
    return Written().number(watch).number(mask).number(cookie).number(length).text(name, length);
}

Written record(std::uint8_t kind, std::uint64_t fileSystem, std::string_view handle, std::string_view name) {
    const Written body = Written()
                             .number(fileSystem)
                             .number(static_cast<std::uint32_t>(handle.size()))
                             .number(std::int32_t{129})
                             .text(handle, handle.size())
                             .text(name, name.size() + 1);
    return Written().number(kind).number(std::uint8_t{0}).number(static_cast<std::uint16_t>(body.size() + 4)).add(body);
}

Written fanotify(std::uint64_t mask, const Written& records, std::uint8_t version = FANOTIFY_METADATA_VERSION) {
    return Written()
        .number(static_cast<std::uint32_t>(sizeof(fanotify_event_metadata) + records.size()))
        .number(version)
        .number(std::uint8_t{0})
        .number(static_cast<std::uint16_t>(sizeof(fanotify_event_metadata)))
        .number(mask)
        .number(std::int32_t{-1})
        .number(std::int32_t{1})
        .add(records);
}

TEST(InotifyEvents, WithoutBytesThereIsNone) {
    std::span<const std::byte> bytes;
    EXPECT_EQ(takeInotifyEvent(bytes), std::nullopt);
}

TEST(InotifyEvents, AreTakenOneAfterAnother) {
    const Written written = inotify(1, IN_CREATE, 0, "name", 16).add(inotify(2, IN_MOVE_SELF, 7, "", 0));
    std::span<const std::byte> bytes = written.bytes();
    EXPECT_EQ(takeInotifyEvent(bytes), (InotifyEvent{1, IN_CREATE, 0, "name"}));
    EXPECT_EQ(takeInotifyEvent(bytes), (InotifyEvent{2, IN_MOVE_SELF, 7, ""}));
    EXPECT_EQ(takeInotifyEvent(bytes), std::nullopt);
}

TEST(InotifyEvents, ACutEventEndsThem) {
    for (std::size_t cut = 1; cut < sizeof(inotify_event) + 16; ++cut) {
        const Written written = inotify(1, IN_CREATE, 0, "name", 16).cut(cut);
        std::span<const std::byte> bytes = written.bytes();
        EXPECT_EQ(takeInotifyEvent(bytes), std::nullopt) << cut;
        EXPECT_TRUE(bytes.empty());
    }
    const Written huge = inotify(1, 0, 0, "", 0).cut(4).number(std::uint32_t{0xFFFFFFFF});
    std::span<const std::byte> bytes = huge.bytes();
    EXPECT_EQ(takeInotifyEvent(bytes), std::nullopt);
}

TEST(InotifyEvents, ANameMayFillItsRoomAndHoldsNoSlash) {
    const Written written = inotify(1, 0, 0, "1234", 4).add(inotify(1, 0, 0, "../x", 8));
    std::span<const std::byte> bytes = written.bytes();
    EXPECT_EQ(takeInotifyEvent(bytes)->name, "1234");
    EXPECT_EQ(takeInotifyEvent(bytes)->name, "");
}

TEST(FanotifyEvents, WithoutBytesThereIsNone) {
    std::span<const std::byte> bytes;
    EXPECT_EQ(takeFanotifyEvent(bytes), std::nullopt);
}

TEST(FanotifyEvents, AnEventMayHaveNoRecords) {
    const Written written = fanotify(FAN_Q_OVERFLOW, {});
    std::span<const std::byte> bytes = written.bytes();
    EXPECT_EQ(takeFanotifyEvent(bytes), (FanotifyEvent{FAN_Q_OVERFLOW, {}, {}, {}}));
    EXPECT_EQ(takeFanotifyEvent(bytes), std::nullopt);
}

TEST(FanotifyEvents, TellTheFolderTheNameAndTheFile) {
    const Written written = fanotify(FAN_CREATE, record(FAN_EVENT_INFO_TYPE_DFID_NAME, 5, "folder", "name")
                                                     .add(record(99, 0, "unknown", ""))
                                                     .add(record(FAN_EVENT_INFO_TYPE_FID, 5, "file", "")))
                                .add(fanotify(FAN_ATTRIB, record(FAN_EVENT_INFO_TYPE_DFID, 6, "folder", "")));
    std::span<const std::byte> bytes = written.bytes();
    EXPECT_EQ(takeFanotifyEvent(bytes),
              (FanotifyEvent{FAN_CREATE, {true, 5, 129, "folder"}, "name", {true, 5, 129, "file"}}));
    EXPECT_EQ(takeFanotifyEvent(bytes), (FanotifyEvent{FAN_ATTRIB, {true, 6, 129, "folder"}, "", {}}));
    EXPECT_EQ(takeFanotifyEvent(bytes), std::nullopt);
}

TEST(FanotifyEvents, ACutEventEndsThem) {
    const Written whole = fanotify(FAN_CREATE, record(FAN_EVENT_INFO_TYPE_DFID_NAME, 5, "folder", "name"));
    for (std::size_t cut = 1; cut < whole.size(); ++cut) {
        const Written written = Written(whole).cut(cut);
        std::span<const std::byte> bytes = written.bytes();
        EXPECT_EQ(takeFanotifyEvent(bytes), std::nullopt) << cut;
    }
}

TEST(FanotifyEvents, AnotherVersionIsNotRead) {
    const Written written = fanotify(FAN_CREATE, {}, FANOTIFY_METADATA_VERSION + 1);
    std::span<const std::byte> bytes = written.bytes();
    EXPECT_EQ(takeFanotifyEvent(bytes), std::nullopt);
}

TEST(FanotifyEvents, ADamagedRecordIsNotRead) {
    Written tooLong;
    tooLong.number(std::uint8_t{FAN_EVENT_INFO_TYPE_DFID_NAME}).number(std::uint8_t{0}).number(std::uint16_t{400});
    Written longHandle;
    longHandle.number(std::uint8_t{FAN_EVENT_INFO_TYPE_DFID_NAME}).number(std::uint8_t{0}).number(std::uint16_t{24});
    longHandle.number(std::uint64_t{5}).number(std::uint32_t{400}).number(std::int32_t{1}).number(std::uint32_t{0});
    const Written slash = record(FAN_EVENT_INFO_TYPE_DFID_NAME, 5, "folder", "../name");
    for (const Written& records : {tooLong, longHandle, slash, Written().number(std::uint32_t{0})}) {
        const Written written = fanotify(FAN_CREATE, records);
        std::span<const std::byte> bytes = written.bytes();
        EXPECT_EQ(takeFanotifyEvent(bytes), (FanotifyEvent{FAN_CREATE, {}, {}, {}}));
    }
}

} // namespace
} // namespace qk::platform::parse
