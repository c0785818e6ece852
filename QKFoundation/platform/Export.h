// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks a declaration that the shared library shows to its users; all else is hidden. Works in C and C++.
#if defined(__GNUC__)
#define QK_EXPORT __attribute__((visibility("default")))
#else
#define QK_EXPORT
#endif

/// Brackets declarations with C linkage in headers that C and C++ share.
#ifdef __cplusplus
#define QK_C_BEGIN extern "C" {
#define QK_C_END }
#else
#define QK_C_BEGIN
#define QK_C_END
#endif
