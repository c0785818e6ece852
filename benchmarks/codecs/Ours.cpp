// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/Services.h"

#include "benchmarks/codecs/Jobs.h"

#include <benchmark/benchmark.h>

#include <span>

namespace qk::bench {
namespace {

using namespace platform;

const Codecs& codecs() {
    static const Codecs all = makeHostCodecs();
    return all;
}

} // namespace

void ours(Job job) {
    static const NSData xml(bytes(Job::readXML));
    static const NSData binary(bytes(Job::readBinary));
    const PropertyListSerialization& lists = *codecs().propertyLists;
    switch (job) {
    case Job::readXML:
    case Job::readBinary:
        benchmark::DoNotOptimize(
            lists.propertyListWithData(job == Job::readXML ? xml : binary, NSPropertyListMutabilityOptions::Immutable));
        break;
    case Job::writeXML:
        benchmark::DoNotOptimize(lists.dataWithPropertyList(records(), NSPropertyListFormat::XML_v1_0));
        break;
    case Job::writeBinary:
        benchmark::DoNotOptimize(lists.dataWithPropertyList(records(), NSPropertyListFormat::Binary_v1_0));
        break;
    }
}

void ourSHA1(std::string_view text) {
    benchmark::DoNotOptimize(codecs().crypto->SHA1(std::as_bytes(std::span(text))));
}

} // namespace qk::bench
