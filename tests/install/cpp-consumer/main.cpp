// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/QKFoundation.h"

#include <cstdlib>
#include <iostream>

int main() {
    return EXIT_SUCCESS;
}
