# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` puts where.
if(NOT QK_INSTALL)
  return()
endif()
