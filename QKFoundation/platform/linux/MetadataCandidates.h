// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/MetadataContentTypes.h"
#include "QKFoundation/platform/objects/NSSortDescriptor.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace qk::platform {

/// A file that a search may find.
struct MetadataCandidate {
    std::string path; ///< absolute, as the kernel knows it
    double modified = 0;
    double used = 0;
    const MetadataContentType* type = nullptr; ///< never null but in a candidate that is still being made

    friend bool operator==(const MetadataCandidate&, const MetadataCandidate&) = default;
};

/// What the index tells of candidates. Their paths lie under `root`, which is left out of what is told: "" or the
/// folder of captured files, without a trailing "/". A plain value.
class MetadataAttributes {
public:
    explicit MetadataAttributes(std::string root = {}) : root_(std::move(root)) {}

    /// The attribute of that name; nothing for one that the index does not have.
    [[nodiscard]] std::optional<Value> valueOf(const MetadataCandidate& candidate, const NSString& name) const;

    /// All of them, by their names.
    [[nodiscard]] NSDictionary allOf(const MetadataCandidate& candidate) const;

    /// The path as it is told.
    [[nodiscard]] NSString pathOf(const MetadataCandidate& candidate) const;

private:
    std::string root_;
};

/// The order of the sort descriptors, and of paths where those see no difference: no two files are equal. Threads: any.
class MetadataOrder {
public:
    MetadataOrder(const std::vector<NSSortDescriptor>& descriptors, MetadataAttributes attributes);

    /// Whether `left` comes before `right`.
    [[nodiscard]] bool isBefore(const MetadataCandidate& left, const MetadataCandidate& right) const;

    /// Whether one with these dates, whatever else it is, comes after `other`. False where the dates do not tell.
    [[nodiscard]] bool comesAfter(double modified, double used, const MetadataCandidate& other) const;

private:
    enum class Field { modified, used, path, other };
    struct Step {
        Field field;
        NSSortDescriptor descriptor;
    };

    [[nodiscard]] std::weak_ordering compare(const Step& step, const MetadataCandidate& left,
                                             const MetadataCandidate& right) const;

    std::vector<Step> steps_;
    MetadataAttributes attributes_;
};

/// The first ones, in order.
struct MetadataSelection {
    std::vector<MetadataCandidate> best;
    /// The last one that was kept when another one was left out: all that were left out come after it. Nothing when
    /// none was.
    std::optional<MetadataCandidate> horizon;
};

/// Keeps the first ones of what it is given, in memory that does not grow with how many those are. Threads: one at a
/// time.
class MetadataCollector {
public:
    /// Keeps `most`, or all when that is 0, of those that do not come after `horizon`.
    MetadataCollector(const MetadataOrder& order, std::size_t most, std::optional<MetadataCandidate> horizon = {});

    /// Whether one with these dates may be one of the first. To be asked before what costs more.
    [[nodiscard]] bool mayTake(double modified, double used) const;
    void take(MetadataCandidate candidate);

    /// See `MetadataSelection`.
    [[nodiscard]] const std::optional<MetadataCandidate>& horizon() const noexcept { return horizon_; }

    /// The first ones of this and `others`; all are empty afterwards.
    [[nodiscard]] MetadataSelection select(std::vector<MetadataCollector>& others);

private:
    void cut();

    const MetadataOrder* order_;
    std::size_t most_;
    std::optional<MetadataCandidate> horizon_;
    std::vector<MetadataCandidate> kept_; // at most twice as many
};

} // namespace qk::platform
