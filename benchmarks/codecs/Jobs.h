// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <cstddef>
#include <string_view>

/// What is measured, and who does it.
namespace qk::bench {

enum class Job { readXML, readBinary, writeXML, writeBinary };

/// Records as an inventory has them: texts, integers, a date, a real number, a flag, data and a list each; about 1 MB
/// of XML.
[[nodiscard]] const Value& records();

/// The records in the form that the job reads or writes.
[[nodiscard]] std::string_view bytes(Job job);

/// Does the job once with this library.
void ours(Job job);

/// libplist alone: a tree parsed and freed, or made of plain records, written and freed.
void libplist(Job job);

/// The seconds that Python's plistlib takes for the job, in the median; 0 without it.
[[nodiscard]] double plistlib(Job job);

/// One digest of `bytes`, with this library and with libcrypto alone.
void ourSHA1(std::string_view bytes);
void libcryptoSHA1(std::string_view bytes);

} // namespace qk::bench
