# SPDX-License-Identifier: Apache-2.0
# Libraries outside this project. The library itself needs them under the Linux adapter only; what the tests, tools and
# benchmarks need is looked up in their own folders.
find_package(Threads REQUIRED)
if(QK_ADAPTER STREQUAL "linux" AND QK_WITH_SYSTEMD)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(libsystemd REQUIRED IMPORTED_TARGET libsystemd) # PkgConfig::libsystemd
endif()
