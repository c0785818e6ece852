// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks a declaration that the shared library shows to its users; all else is hidden. Works in C and C++.
#if defined(__GNUC__)
#define QK_EXPORT __attribute__((visibility("default")))
#else
#define QK_EXPORT
#endif
