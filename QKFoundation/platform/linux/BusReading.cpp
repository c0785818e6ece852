// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BusReading.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace qk::platform {
namespace {

constexpr int kDeepest = 32; // real answers nest about six deep

std::optional<BusValue> readValue(sd_bus_message* message, int depth);

template <typename Wire, typename Held>
std::optional<BusValue> readBasic(sd_bus_message* message, char type) {
    Wire wire{};
    if (sd_bus_message_read_basic(message, type, &wire) <= 0) {
        return std::nullopt;
    }
    return BusValue{static_cast<Held>(wire)};
}

// A type that nobody here asks for.
std::optional<BusValue> skip(sd_bus_message* message) {
    return sd_bus_message_skip(message, nullptr) >= 0 ? std::optional(BusValue{}) : std::nullopt;
}

// Up to the end of the container that has been entered; false for a damaged one.
template <typename Visitor>
bool forEachInside(sd_bus_message* message, Visitor&& visit) {
    for (;;) {
        const int isAtEnd = sd_bus_message_at_end(message, 0);
        if (isAtEnd < 0) {
            return false;
        }
        if (isAtEnd > 0) {
            return sd_bus_message_exit_container(message) >= 0;
        }
        if (!visit()) {
            return false;
        }
    }
}

std::optional<BusValue> readList(sd_bus_message* message, char type, const char* contents, int depth) {
    BusList list;
    const bool isWhole = sd_bus_message_enter_container(message, type, contents) > 0 && forEachInside(message, [&] {
                             std::optional<BusValue> value = readValue(message, depth + 1);
                             if (!value.has_value()) {
                                 return false;
                             }
                             list.push_back(*std::move(value));
                             return true;
                         });
    return isWhole ? std::optional(BusValue{std::move(list)}) : std::nullopt;
}

std::optional<BusValue> readDictionary(sd_bus_message* message, const char* contents, int depth) {
    BusDictionary dictionary;
    const std::string entry(contents + 1, std::char_traits<char>::length(contents) - 2); // without its braces
    const bool isWhole =
        sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, contents) > 0 && forEachInside(message, [&] {
            const char* key = nullptr;
            if (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, entry.c_str()) <= 0 ||
                sd_bus_message_read_basic(message, entry.front(), &key) <= 0) {
                return false;
            }
            std::optional<BusValue> value = readValue(message, depth + 1);
            if (!value.has_value() || sd_bus_message_exit_container(message) < 0) {
                return false;
            }
            dictionary.push_back({key, *std::move(value)});
            return true;
        });
    return isWhole ? std::optional(BusValue{std::move(dictionary)}) : std::nullopt;
}

std::optional<BusValue> readArray(sd_bus_message* message, const char* contents, int depth) {
    const std::string type(contents); // lies in the message, which moves on
    if (type == "y") {
        const void* bytes = nullptr;
        std::size_t size = 0;
        if (sd_bus_message_read_array(message, 'y', &bytes, &size) <= 0) {
            return std::nullopt;
        }
        return BusValue{size > 0 ? std::string(static_cast<const char*>(bytes), size) : std::string()};
    }
    if (type.starts_with("{s") || type.starts_with("{o")) {
        return readDictionary(message, type.c_str(), depth);
    }
    return type.starts_with('{') ? skip(message) : readList(message, SD_BUS_TYPE_ARRAY, type.c_str(), depth);
}

std::optional<BusValue> readVariant(sd_bus_message* message, const char* contents, int depth) {
    const std::string type(contents);
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, type.c_str()) <= 0) {
        return std::nullopt;
    }
    std::optional<BusValue> value = readValue(message, depth + 1);
    return value.has_value() && sd_bus_message_exit_container(message) >= 0 ? std::move(value) : std::nullopt;
}

std::optional<BusValue> readValue(sd_bus_message* message, int depth) {
    char type = 0;
    const char* contents = nullptr;
    if (depth > kDeepest || sd_bus_message_peek_type(message, &type, &contents) <= 0) {
        return std::nullopt;
    }
    switch (type) {
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH: return readBasic<const char*, std::string>(message, type);
    case SD_BUS_TYPE_BOOLEAN: return readBasic<int, bool>(message, type);
    case SD_BUS_TYPE_BYTE: return readBasic<std::uint8_t, std::int64_t>(message, type);
    case SD_BUS_TYPE_INT32: return readBasic<std::int32_t, std::int64_t>(message, type);
    case SD_BUS_TYPE_UINT32: return readBasic<std::uint32_t, std::int64_t>(message, type);
    case SD_BUS_TYPE_INT64: return readBasic<std::int64_t, std::int64_t>(message, type);
    case SD_BUS_TYPE_UINT64: return readBasic<std::uint64_t, std::int64_t>(message, type);
    case SD_BUS_TYPE_ARRAY: return readArray(message, contents, depth);
    case SD_BUS_TYPE_STRUCT: return readList(message, SD_BUS_TYPE_STRUCT, std::string(contents).c_str(), depth);
    case SD_BUS_TYPE_VARIANT: return readVariant(message, contents, depth);
    default: return skip(message);
    }
}

struct Answers {
    std::vector<UniqueBusMessage> messages;
    std::size_t pending = 0;
};

struct Place {
    Answers* answers;
    std::size_t index;
};

int keepAnswer(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    const auto& place = *static_cast<Place*>(data);
    if (sd_bus_message_is_method_error(message, nullptr) <= 0) {
        place.answers->messages[place.index].reset(sd_bus_message_ref(message));
    }
    --place.answers->pending;
    return 0;
}

} // namespace

std::optional<BusValue> readBusValue(sd_bus_message* message) {
    return readValue(message, 0);
}

std::optional<std::vector<UniqueBusMessage>> callAllOnBus(sd_bus* bus, const std::vector<UniqueBusMessage>& calls,
                                                          BusDeadline deadline) {
    Answers answers;
    answers.messages.resize(calls.size());
    std::vector<Place> places;
    places.reserve(calls.size());
    std::vector<UniqueBusSlot> slots; // ended before what they write to
    for (const UniqueBusMessage& call : calls) {
        sd_bus_slot* slot = nullptr;
        places.push_back({&answers, places.size()});
        if (sd_bus_message_set_auto_start(call.get(), 0) < 0 ||
            sd_bus_call_async(bus, &slot, call.get(), keepAnswer, &places.back(), UINT64_MAX) < 0) {
            return std::nullopt;
        }
        slots.emplace_back(slot);
        ++answers.pending;
    }
    while (answers.pending > 0) {
        if (!stepBus(bus, deadline)) {
            return std::nullopt;
        }
    }
    return std::move(answers.messages);
}

} // namespace qk::platform
