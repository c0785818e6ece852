// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BusConnection.h"

#include "tools/softwareupdate/PackageManagerOutput.h"
#include "tools/softwareupdate/UpdateSources.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace qk::softwareupdate {
namespace {

using platform::BusDeadline;
using platform::callOnBus;
using platform::UniqueBus;
using platform::UniqueBusMessage;
using platform::UniqueBusSlot;

constexpr const char* kService = "org.freedesktop.PackageKit";
constexpr const char* kTransaction = "org.freedesktop.PackageKit.Transaction";
constexpr std::chrono::milliseconds kAnswerLimit{200}; // of a daemon that lives
constexpr std::chrono::seconds kTransactionLimit{60};
constexpr std::uint32_t kExitSuccess = 1; // PkExitEnum
constexpr std::uint32_t kInfoBlocked = 9; // PkInfoEnum: will not be installed

BusDeadline in(std::chrono::milliseconds time) {
    return std::chrono::steady_clock::now() + time;
}

UniqueBusMessage newCall(sd_bus* bus, const char* path, const char* interface, const char* method) {
    sd_bus_message* call = nullptr;
    return UniqueBusMessage(
        sd_bus_message_new_method_call(bus, &call, kService, path, interface, method) >= 0 ? call : nullptr);
}

// The path of a new transaction's object; "" when PackageKit does not run.
std::string createTransaction(sd_bus* bus) {
    const UniqueBusMessage call = newCall(bus, "/org/freedesktop/PackageKit", kService, "CreateTransaction");
    const UniqueBusMessage reply = call ? callOnBus(bus, call.get(), in(kAnswerLimit)) : UniqueBusMessage();
    const char* path = nullptr;
    return reply && sd_bus_message_read(reply.get(), "o", &path) >= 0 ? std::string(path) : std::string();
}

// What a transaction tells, signal by signal.
struct Transaction {
    PendingUpdates updates;
    std::optional<std::uint32_t> exit;

    void add(std::uint32_t info, const char* packageID) {
        // The upper half of the number says more about some packages.
        std::optional<PendingUpdate> update = packageKitUpdate(packageID);
        if ((info & 0xFFFFU) != kInfoBlocked && update.has_value()) {
            updates.push_back(*std::move(update));
        }
    }
};

int readPackage(sd_bus_message* message, Transaction& transaction) {
    std::uint32_t info = 0;
    const char* packageID = nullptr;
    const char* summary = nullptr;
    const int read = sd_bus_message_read(message, "uss", &info, &packageID, &summary);
    if (read > 0) {
        transaction.add(info, packageID);
    }
    return read;
}

int handleSignal(sd_bus_message* message, void* place, sd_bus_error* /*error*/) {
    auto& transaction = *static_cast<Transaction*>(place);
    const std::string_view member = sd_bus_message_get_member(message);
    if (member == "Package") {
        readPackage(message, transaction);
    } else if (member == "Packages" && sd_bus_message_enter_container(message, 'a', "(uss)") > 0) {
        while (sd_bus_message_enter_container(message, 'r', "uss") > 0 && readPackage(message, transaction) > 0 &&
               sd_bus_message_exit_container(message) >= 0) {
        }
    } else if (member == "Finished") {
        std::uint32_t exit = 0;
        transaction.exit = sd_bus_message_read(message, "uu", &exit, nullptr) > 0 ? exit : 0;
    }
    return 0;
}

} // namespace

std::optional<PendingUpdates> updatesOfPackageKit() {
    const UniqueBus bus = platform::openSystemBus();
    const std::string path = bus ? createTransaction(bus.get()) : std::string();
    if (path.empty()) {
        return std::nullopt;
    }
    Transaction transaction;
    sd_bus_slot* match = nullptr;
    if (sd_bus_match_signal_async(bus.get(), &match, kService, path.c_str(), kTransaction, nullptr, handleSignal,
                                  nullptr, &transaction) < 0) {
        return std::nullopt;
    }
    const UniqueBusSlot slot(match);
    const BusDeadline deadline = in(kTransactionLimit);
    const UniqueBusMessage call = newCall(bus.get(), path.c_str(), kTransaction, "GetUpdates");
    const std::uint64_t noFilter = 0;
    if (!call || sd_bus_message_append(call.get(), "t", noFilter) < 0 || !callOnBus(bus.get(), call.get(), deadline)) {
        return std::nullopt;
    }
    while (!transaction.exit.has_value() && platform::stepBus(bus.get(), deadline)) {
    }
    return transaction.exit == kExitSuccess ? std::optional(std::move(transaction.updates)) : std::nullopt;
}

} // namespace qk::softwareupdate
