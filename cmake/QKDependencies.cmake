# SPDX-License-Identifier: Apache-2.0
# Libraries outside this project. The library itself needs them under the Linux adapter only; what the tests, tools and
# benchmarks need is looked up in their own folders.
find_package(Threads REQUIRED)
if(QK_ADAPTER STREQUAL "linux")
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(libplist REQUIRED IMPORTED_TARGET GLOBAL libplist-2.0) # PkgConfig::libplist
  pkg_check_modules(libcrypto REQUIRED IMPORTED_TARGET GLOBAL libcrypto>=3.0) # PkgConfig::libcrypto
  pkg_check_modules(pugixml REQUIRED IMPORTED_TARGET GLOBAL pugixml) # PkgConfig::pugixml
  if(QK_WITH_SYSTEMD)
    pkg_check_modules(libsystemd REQUIRED IMPORTED_TARGET GLOBAL libsystemd) # PkgConfig::libsystemd
  endif()
endif()
