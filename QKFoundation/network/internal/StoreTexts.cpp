// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/StoreTexts.h"

namespace qk::internal {

const StoreTexts& storeTexts() {
    static const StoreTexts& texts = *new StoreTexts;
    return texts;
}

} // namespace qk::internal
