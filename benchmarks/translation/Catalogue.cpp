// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/translation/Catalogue.h"

#include <algorithm>
#include <array>
#include <random>

namespace qk::bench {
namespace {

constexpr std::array kPlaces{"session", "settings", "filetransfer", "chat", "account", "remoteprinting", "audio"};
constexpr std::array kThings{"title", "button.ok", "button.cancel", "error.timeout", "hint", "description"};

std::string keyOf(std::size_t number, const char* suffix) {
    return std::string(kPlaces[number % kPlaces.size()]) + "." + kThings[number / 3 % kThings.size()] + "." +
           std::to_string(number) + suffix;
}

} // namespace

Catalogue makeCatalogue() {
    std::vector<std::size_t> numbers(Catalogue::kCount);
    for (std::size_t number = 0; number < numbers.size(); ++number) {
        numbers[number] = number;
    }
    std::mt19937 random(20'240'501); // NOLINT(cert-msc51-cpp): the same order in every run
    std::ranges::shuffle(numbers, random);
    Catalogue catalogue;
    for (const std::size_t number : numbers) {
        catalogue.keys.push_back(keyOf(number, ""));
        catalogue.texts.push_back("Text Nummer " + std::to_string(number) + " für %1% und %2%");
        catalogue.missing.push_back(keyOf(number, ".missing"));
    }
    return catalogue;
}

} // namespace qk::bench
