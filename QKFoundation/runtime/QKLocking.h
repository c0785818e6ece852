// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The protocol `QKLocking` and the lock of the platform that adopts it, `NSRecursiveLock(QKLocking)`. The protocol
/// stands below, beside the lock.
#include "QKFoundation/platform/objects/NSRecursiveLock.h"
#include "QKFoundation/platform/objects/QKLocking.h"
