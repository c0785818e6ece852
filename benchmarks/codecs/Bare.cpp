// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/codecs/Jobs.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace qk::bench {
namespace {

plist_t parsed(Job job) {
    const std::string_view text = bytes(job);
    plist_t root = nullptr;
    (job == Job::readXML ? plist_from_xml : plist_from_bin)(text.data(), static_cast<std::uint32_t>(text.size()),
                                                            &root);
    return root;
}

// A record as a program has it that knows libplist alone.
struct Record {
    std::uint64_t identifier;
    std::string name;
    std::string path;
    std::string owner;
    std::int32_t seen; // seconds from 2001 on
    double load;
    bool online;
    std::string key;
    std::vector<std::string> tags;
};

Record plain(const NSDictionary& record) {
    static constexpr double kSecondsFrom1970To2001 = 978307200;
    const auto text = [&record](const char* key) {
        return record.get<NSString>(*NSString::fromUTF8(key))->utf8Lossy();
    };
    Record result{
        .identifier = record.get<NSNumber>("identifier")->unsignedIntegerValue(),
        .name = text("name"),
        .path = text("path"),
        .owner = text("owner"),
        .seen = static_cast<std::int32_t>(record.get<NSDate>("seen")->timeIntervalSince1970() - kSecondsFrom1970To2001),
        .load = record.get<NSNumber>("load")->doubleValue(),
        .online = record.get<NSNumber>("online")->boolValue(),
        .key = std::string(record.get<NSData>("key")->view()),
        .tags = {}};
    for (const Value& tag : *record.get<NSArray>("tags")) {
        result.tags.push_back(tag.as<NSString>()->utf8Lossy());
    }
    return result;
}

std::vector<Record> plainRecords() {
    std::vector<Record> result;
    for (const Value& record : *records().as<NSArray>()) {
        result.push_back(plain(*record.as<NSDictionary>()));
    }
    return result;
}

plist_t tree(const Record& record) {
    plist_t tags = plist_new_array();
    for (const std::string& tag : record.tags) {
        plist_array_append_item(tags, plist_new_string(tag.c_str()));
    }
    plist_t result = plist_new_dict();
    plist_dict_set_item(result, "identifier", plist_new_uint(record.identifier));
    plist_dict_set_item(result, "key", plist_new_data(record.key.data(), record.key.size()));
    plist_dict_set_item(result, "load", plist_new_real(record.load));
    plist_dict_set_item(result, "name", plist_new_string(record.name.c_str()));
    plist_dict_set_item(result, "online", plist_new_bool(record.online ? 1 : 0));
    plist_dict_set_item(result, "owner", plist_new_string(record.owner.c_str()));
    plist_dict_set_item(result, "path", plist_new_string(record.path.c_str()));
    plist_dict_set_item(result, "seen", plist_new_date(record.seen, 0));
    plist_dict_set_item(result, "tags", tags);
    return result;
}

void write(Job job) {
    static const std::vector<Record> all = plainRecords();
    plist_t root = plist_new_array();
    for (const Record& record : all) {
        plist_array_append_item(root, tree(record));
    }
    char* text = nullptr;
    std::uint32_t length = 0;
    (job == Job::writeXML ? plist_to_xml : plist_to_bin)(root, &text, &length);
    benchmark::DoNotOptimize(text);
    std::free(text);
    plist_free(root);
}

} // namespace

void libplist(Job job) {
    if (job == Job::readXML || job == Job::readBinary) {
        plist_free(parsed(job));
    } else {
        write(job);
    }
}

void libcryptoSHA1(std::string_view text) {
    static const EVP_MD* const algorithm = ::EVP_MD_fetch(nullptr, "SHA1", nullptr);
    unsigned char digest[20];
    ::EVP_Digest(text.data(), text.size(), digest, nullptr, algorithm, nullptr);
    benchmark::DoNotOptimize(digest);
}

} // namespace qk::bench
