// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Register.h"

#include <libmount.h>
#include <sys/statvfs.h>

#include <cstring>

namespace qk::bench {
namespace {

const bool kVolumes = compete("libmount", Job::volumes, [] {
    libmnt_table* table = mnt_new_table_from_file("/proc/self/mountinfo");
    libmnt_iter* iterator = mnt_new_iter(MNT_ITER_FORWARD);
    libmnt_fs* fileSystem = nullptr;
    while (mnt_table_next_fs(table, iterator, &fileSystem) == 0) {
        const char* source = mnt_fs_get_source(fileSystem);
        if (source != nullptr && std::strncmp(source, "/dev/", 5) == 0) {
            struct statvfs capacity {};
            benchmark::DoNotOptimize(::statvfs(mnt_fs_get_target(fileSystem), &capacity));
        }
    }
    mnt_free_iter(iterator);
    mnt_unref_table(table);
});

} // namespace
} // namespace qk::bench
