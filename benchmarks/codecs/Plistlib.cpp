// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/codecs/Jobs.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace qk::bench {

double plistlib(Job job) {
    static constexpr const char* kNames[] = {"read", "read", "write-xml", "write-binary"};
    std::string path = std::filesystem::temp_directory_path() / "codecs-benchmark-XXXXXX";
    const int file = ::mkstemp(path.data());
    if (file < 0) {
        return 0;
    }
    std::ofstream(path, std::ios::binary) << bytes(job);
    const std::string command = "python3 '" QK_PLISTLIB_SCRIPT "' " + std::string(kNames[static_cast<int>(job)]) +
                                " '" + path + "' 2>/dev/null";
    double seconds = 0;
    if (std::FILE* output = ::popen(command.c_str(), "r")) {
        if (std::fscanf(output, "%lf", &seconds) != 1) {
            seconds = 0;
        }
        ::pclose(output);
    }
    std::filesystem::remove(path);
    return seconds;
}

} // namespace qk::bench
