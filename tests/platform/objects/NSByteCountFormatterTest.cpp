// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSByteCountFormatter.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <limits>

namespace qk {
namespace {

using enum NSByteCountFormatterCountStyle;

NSString binary(std::int64_t bytes) {
    return NSByteCountFormatter::stringFromByteCount(bytes, Binary);
}

TEST(NSByteCountFormatter, NoBytesAreZeroKilobytes) {
    for (const auto style : {File, Memory, Decimal, Binary}) {
        EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(0, style), "Zero KB");
    }
}

TEST(NSByteCountFormatter, BinaryCounts) {
    const struct {
        std::int64_t bytes;
        const char* text;
    } rows[] = {{1, "1 byte"},
                {-1, "-1 byte"},
                {2, "2 bytes"},
                {-2, "-2 bytes"},
                {499, "499 bytes"},
                {999, "999 bytes"},
                {1000, "1,000 bytes"},
                {1023, "1,023 bytes"},
                {1024, "1 KB"},
                {1536, "2 KB"},
                {2560, "2 KB"}, // a half goes to the even neighbour
                {11999, "12 KB"},
                {900000, "879 KB"},
                {1048575, "1,024 KB"}, // a unit begins at its power
                {1048576, "1 MB"},
                {12345678, "11.8 MB"},
                {123456789, "117.7 MB"},
                {1073741823, "1,024 MB"},
                {1073741824, "1 GB"},
                {1234567898, "1.15 GB"},
                {1127428915, "1.05 GB"},
                {1610612736, "1.5 GB"},
                {12345678987, "11.5 GB"},
                {1099511627776, "1 TB"},
                {1125899906842624, "1 PB"},
                {1152921504606846976, "1 EB"},
                {-999, "-999 bytes"},
                {-1000, "-1,000 bytes"},
                {-1023, "-1,023 bytes"},
                {-1024, "-1 KB"},
                {-12345678987, "-11.5 GB"},
                {std::numeric_limits<std::int64_t>::max(), "8 EB"},
                {std::numeric_limits<std::int64_t>::min(), "-8 EB"}};
    for (const auto& row : rows) {
        EXPECT_EQ(binary(row.bytes), text(row.text)) << row.bytes;
        EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(row.bytes, Memory), text(row.text)) << row.bytes;
    }
}

TEST(NSByteCountFormatter, DecimalCounts) {
    const struct {
        std::int64_t bytes;
        const char* text;
    } rows[] = {{999, "999 bytes"},
                {1000, "1 KB"},
                {1500, "2 KB"},
                {999999, "1,000 KB"},
                {1250000, "1.2 MB"},
                {1234567898, "1.23 GB"},
                {std::numeric_limits<std::int64_t>::max(), "9.22 EB"},
                {std::numeric_limits<std::int64_t>::min(), "-9.22 EB"}};
    for (const auto& row : rows) {
        EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(row.bytes, File), text(row.text)) << row.bytes;
        EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(row.bytes, Decimal), text(row.text)) << row.bytes;
    }
}

} // namespace
} // namespace qk
