// SPDX-License-Identifier: Apache-2.0
// The composition for builds without an adapter of a real system: a machine about which nothing is known.
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/memory/MemoryCodecs.h"

std::shared_ptr<const qk::platform::Services> qk::platform::makeHostServices() {
    return memory::Machine().services();
}

qk::platform::Codecs qk::platform::makeHostCodecs() {
    return {std::make_shared<memory::TextPropertyLists>(), std::make_shared<memory::NoCrypto>()};
}
