// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/Kernel.h"

#include <utility>

namespace qk::platform {

/// The kernel's information tree, answered from the files under `LinuxRoot`. A fact that no file tells is absent
/// (`ENOENT`). Texts that are not UTF-8 have U+FFFD for each malformed byte.
///
/// | fact | bytes | source |
/// |---|---|---|
/// | "hw.model" | text | `hardware::model` |
/// | "hw.physicalcpu", "hw.logicalcpu" | 4 | `hardware::physicalProcessors`, `hardware::logicalProcessors` |
/// | "hw.cpufrequency_max" (Hz), "hw.memsize" | 8 | `hardware::maximumFrequency`, `hardware::memorySize` |
/// | "hw.pagesize" | 8 | sysconf(_SC_PAGESIZE): this program's own |
/// | "hw.cpu64bit_capable" | 4 | `hardware::is64BitCapable` |
/// | "machdep.cpu.brand_string" | text | `hardware::processorName` |
/// | "kern.osversion" | text | `operatingsystem::build` |
/// | {1, 2} | text | `operatingsystem::kernelVersion` |
/// | {1, 21} | 16 | `operatingsystem::bootTime`, whole seconds |
/// | {1, 14, 0} | 648 a process | `processes::readTable`; the size that is told has room to spare |
class LinuxKernel final : public Kernel {
public:
    explicit LinuxKernel(LinuxRoot root = {}) : root_(std::move(root)) {}

    int sysctlbyname(const char* name, void* buffer, std::size_t* size) const override;
    int sysctl(std::span<const int> name, void* buffer, std::size_t* size) const override;

private:
    LinuxRoot root_;
};

} // namespace qk::platform
