// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/HardwareDatabase.h"

#include <systemd/sd-hwdb.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

struct CloseIndex {
    void operator()(sd_hwdb* index) const noexcept { sd_hwdb_unref(index); }
};

std::string digits(unsigned number, std::size_t width) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text(width, '0');
    for (std::size_t place = width; place-- > 0; number >>= 4U) {
        text[place] = kDigits[number & 15U];
    }
    return text;
}

std::optional<std::string> property(sd_hwdb* index, const char* device, const char* key) {
    const char* value = nullptr;
    if (sd_hwdb_get(index, device, key, &value) < 0 || value == nullptr || *value == '\0') {
        return std::nullopt;
    }
    return std::string(value);
}

} // namespace

HardwareNames findInHardwareIndex(const HardwareNumbers& numbers) {
    sd_hwdb* opened = nullptr;
    if (sd_hwdb_new(&opened) < 0) {
        return {};
    }
    const std::unique_ptr<sd_hwdb, CloseIndex> index(opened);
    // The keys of the index are patterns for what the kernel calls the device: "pci:v00008086d000015F3*".
    const std::string device = numbers.isPCI ? "pci:v" + digits(numbers.vendor, 8) + "d" + digits(numbers.device, 8)
                                             : "usb:v" + digits(numbers.vendor, 4) + "p" + digits(numbers.device, 4);
    return {property(index.get(), device.c_str(), "ID_VENDOR_FROM_DATABASE"),
            property(index.get(), device.c_str(), "ID_MODEL_FROM_DATABASE")};
}

} // namespace qk::platform
