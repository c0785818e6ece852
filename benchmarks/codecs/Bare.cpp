// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/codecs/Jobs.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>

namespace qk::bench {
namespace {

plist_t parsed(Job job) {
    const std::string_view text = bytes(job);
    plist_t root = nullptr;
    (job == Job::readXML ? plist_from_xml : plist_from_bin)(text.data(), static_cast<std::uint32_t>(text.size()),
                                                            &root);
    return root;
}

} // namespace

void libplist(Job job) {
    static const plist_t tree = parsed(Job::readXML);
    if (job == Job::readXML || job == Job::readBinary) {
        plist_free(parsed(job));
        return;
    }
    char* text = nullptr;
    std::uint32_t length = 0;
    (job == Job::writeXML ? plist_to_xml : plist_to_bin)(tree, &text, &length);
    benchmark::DoNotOptimize(text);
    std::free(text);
}

void libcryptoSHA1(std::string_view text) {
    static const EVP_MD* const algorithm = ::EVP_MD_fetch(nullptr, "SHA1", nullptr);
    unsigned char digest[20];
    ::EVP_Digest(text.data(), text.size(), digest, nullptr, algorithm, nullptr);
    benchmark::DoNotOptimize(digest);
}

} // namespace qk::bench
