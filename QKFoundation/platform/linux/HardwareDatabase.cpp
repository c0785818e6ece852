// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/HardwareDatabase.h"

#include "QKFoundation/platform/linux/UniqueHandle.h"
#include "QKFoundation/platform/linux/parse/HardwareDatabase.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

constexpr std::size_t kPart = std::size_t{64} << 10U;

// Reads a list, more than a megabyte, only as far as the device.
HardwareNames search(int list, const HardwareNumbers& numbers) {
    parse::HardwareSearch search(numbers.vendor, numbers.device);
    std::vector<char> part(kPart);
    for (;;) {
        const ssize_t count = ::read(list, part.data(), part.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0 || !search.feed({part.data(), static_cast<std::size_t>(count)})) {
            return search.finish();
        }
    }
}

} // namespace

HardwareNames findInHardwareLists(const LinuxRoot& root, const HardwareNumbers& numbers) {
    static constexpr std::array<std::string_view, 2> kFolders{"/usr/share/hwdata/", "/usr/share/misc/"};
    const std::string_view name = numbers.isPCI ? "pci.ids" : "usb.ids";
    for (const std::string_view folder : kFolders) {
        const std::string path = root.path(folder).append(name);
        const UniqueFD list(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
        if (list) {
            return search(list.get(), numbers);
        }
    }
    return {};
}

} // namespace qk::platform
