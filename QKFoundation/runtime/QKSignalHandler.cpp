// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKSignalHandler.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/Services.h"

#include <utility>

namespace qk {

const ClassDescription& QKSignalHandler::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKSignalHandler>("QKSignalHandler", NSObject::describedClass()).build();
    return description;
}

const ClassDescription& QKSignalHandler::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKSignalHandler> QKSignalHandler::initWithSignal(std::int32_t signal, std::function<void()> block) {
    if (signal == 0) {
        return nullptr;
    }
    const std::shared_ptr<const platform::Services> services = platform::services();
    services->signalSources->ignoreSignal(signal);
    std::shared_ptr<QKSignalHandler> handler(new QKSignalHandler);
    if (block) {
        handler->source_ = services->signalSources->makeSignalSource(signal, std::move(block));
    }
    return handler;
}

QKSignalHandler::~QKSignalHandler() = default;

} // namespace qk
