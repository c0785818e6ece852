// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/NetworkWords.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <string>

namespace qk::info {

namespace {

constexpr std::array<std::string_view, 18> kTypes{
    "not known", "6to4", "Bluetooth", "Bond",   "Ethernet", "FireWire",         "Wi-Fi", "IPsec",  "IrDA", "L2TP",
    "Modem",     "PPP",  "PPTP",      "Serial", "VLAN",     "Mobile broadband", "IPv4",  "Bridge",
};

constexpr std::array<std::string_view, 8> kIPv4Methods{
    "", "manual", "automatic", "DHCP", "DHCP with a manual address", "BOOTP", "PPP", "link-local",
};

constexpr std::array<std::string_view, 6> kIPv6Methods{
    "", "automatic", "link-local", "manual", "router advertisement", "6to4",
};

std::optional<Content> method(std::span<const std::string_view> words, std::uint64_t number,
                              const std::optional<NSString>& text) {
    return number == 0 || number >= words.size() ? textContent(text)
                                                 : std::optional<Content>(std::string(words[number]));
}

std::optional<std::string> textAt(const NSArray& values, std::size_t index) {
    const auto* text = index < values.count() ? values[index].as<NSString>() : nullptr;
    auto content = text != nullptr ? textContent(*text) : std::nullopt;
    return content.has_value() ? std::optional(std::get<std::string>(*std::move(content))) : std::nullopt;
}

/// The bits of "255.255.255.0"; nothing for another form.
std::optional<std::uint32_t> bitsOf(std::string_view mask) {
    constexpr int kParts = 4;
    constexpr int kBitsOfPart = 8;
    std::uint32_t bits = 0;
    for (int part = 0; part < kParts; ++part) {
        std::uint8_t number = 0;
        const auto [rest, error] = std::from_chars(mask.data(), mask.data() + mask.size(), number);
        if (error != std::errc()) {
            return std::nullopt;
        }
        bits = bits << kBitsOfPart | number;
        mask.remove_prefix(static_cast<std::size_t>(rest - mask.data()));
        if (part + 1 < kParts) {
            if (!mask.starts_with('.')) {
                return std::nullopt;
            }
            mask.remove_prefix(1);
        }
    }
    return mask.empty() ? std::optional(bits) : std::nullopt;
}

/// The length of the prefix that `mask` is; nothing for one with gaps.
std::optional<int> prefixLength(std::string_view mask) {
    const std::optional<std::uint32_t> bits = bitsOf(mask);
    if (!bits.has_value()) {
        return std::nullopt;
    }
    constexpr int kBits = 32;
    const int length = std::countl_one(*bits);
    return length + std::countr_zero(*bits) >= kBits ? std::optional(length) : std::nullopt;
}

} // namespace

std::string_view interfaceTypeWord(QKNetworkInterfaceType type) {
    return kTypes[type < kTypes.size() ? type : QKNetworkInterfaceTypeUnknown];
}

std::optional<Content> methodContent(const QKNetworkInterfaceIPv4Configuration& configuration) {
    return method(kIPv4Methods, configuration.configMethod(), configuration.configMethodString());
}

std::optional<Content> methodContent(const QKNetworkInterfaceIPv6Configuration& configuration) {
    return method(kIPv6Methods, configuration.configMethod(), configuration.configMethodString());
}

Lines linesOf(const NSArray& values) {
    Lines lines;
    for (std::size_t index = 0; index < values.count(); ++index) {
        if (auto text = textAt(values, index)) {
            lines.texts.push_back(*std::move(text));
        }
    }
    return lines;
}

Lines addressesWithMasks(const NSArray& addresses, const NSArray& masks) {
    Lines lines;
    for (std::size_t index = 0; index < addresses.count(); ++index) {
        std::optional<std::string> text = textAt(addresses, index);
        if (!text.has_value()) {
            continue;
        }
        if (const auto mask = textAt(masks, index)) {
            const std::optional<int> length = prefixLength(*mask);
            *text += length.has_value() ? "/" + std::to_string(*length) : " mask " + *mask;
        }
        lines.texts.push_back(*std::move(text));
    }
    return lines;
}

Lines addressesWithPrefixes(const NSArray& addresses, const NSArray& lengths) {
    Lines lines;
    for (std::size_t index = 0; index < addresses.count(); ++index) {
        std::optional<std::string> text = textAt(addresses, index);
        if (!text.has_value()) {
            continue;
        }
        const auto* length = index < lengths.count() ? lengths[index].as<NSNumber>() : nullptr;
        lines.texts.push_back(*text + (length != nullptr ? "/" + std::to_string(length->integerValue()) : ""));
    }
    return lines;
}

} // namespace qk::info
