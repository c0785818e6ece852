// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/translation/Register.h"

/// Look-ups in a table of 5,000 texts beside those of gettext.
int main(int argc, char** argv) {
    using namespace qk::bench;
    benchmark::Initialize(&argc, argv);
    const Catalogue catalogue = makeCatalogue();
    registerOurs(catalogue);
    registerGettext(catalogue);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
