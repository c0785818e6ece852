// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkReader.h"

#include "QKFoundation/platform/linux/LinuxDynamicStore.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qk::platform {
namespace {

// A reading that is under way on this thread.
struct OpenReading {
    const NetworkReader* reader;
    std::shared_ptr<const NetworkSnapshot> snapshot;
    std::shared_ptr<const NetworkServices> services;
    std::shared_ptr<const DynamicStore> store; // null before it is asked for
    std::size_t depth;
};

std::vector<OpenReading>& openReadings() {
    thread_local std::vector<OpenReading> readings;
    return readings;
}

auto openReading(const NetworkReader* reader) {
    return std::ranges::find(openReadings(), reader, &OpenReading::reader);
}

class NetworkReading final : public ConfigurationReading {
public:
    NetworkReading(const NetworkReader* reader, const LinuxRoot& root) : reader_(reader) {
        if (const auto open = openReading(reader); open != openReadings().end()) {
            ++open->depth;
        } else {
            auto snapshot = std::make_shared<const NetworkSnapshot>(root);
            auto services = std::make_shared<const NetworkServices>(snapshot);
            openReadings().push_back({reader, std::move(snapshot), std::move(services), nullptr, 1});
        }
    }
    NetworkReading(const NetworkReading&) = delete;
    NetworkReading& operator=(const NetworkReading&) = delete;
    ~NetworkReading() override {
        if (const auto open = openReading(reader_); open != openReadings().end() && --open->depth == 0) {
            openReadings().erase(open);
        }
    }

private:
    const NetworkReader* reader_; // an identity only: it is not used after its end
};

} // namespace

std::shared_ptr<const NetworkSnapshot> NetworkReader::snapshot() const {
    if (captured_ != nullptr) {
        return captured_;
    }
    const auto open = openReading(this);
    return open != openReadings().end() ? open->snapshot : std::make_shared<const NetworkSnapshot>(root_);
}

std::shared_ptr<const NetworkServices> NetworkReader::services() const {
    const auto open = openReading(this);
    return captured_ == nullptr && open != openReadings().end() ? open->services
                                                                : std::make_shared<const NetworkServices>(snapshot());
}

std::shared_ptr<const DynamicStore> NetworkReader::store(const Variables& variables) const {
    const auto open = openReading(this);
    if (captured_ != nullptr || open == openReadings().end()) {
        return std::make_shared<const LinuxDynamicStore>(services(), variables);
    }
    if (open->store == nullptr) {
        open->store = std::make_shared<const LinuxDynamicStore>(open->services, variables);
    }
    return open->store;
}

std::unique_ptr<ConfigurationReading> NetworkReader::beginReading() const {
    return std::make_unique<NetworkReading>(this, root_);
}

} // namespace qk::platform
