#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// The line above the cut list: number of cuts, the main camera's share of the project in whole
/// percent, the audio angle.
std::string summaryLine(const std::vector<Cut>& cuts, const EditSettings& settings,
                        const Project& project);

/// The main camera's share of the project in whole percent.
std::int64_t mainSharePercent(const std::vector<Cut>& cuts, const EditSettings& settings,
                              const Project& project);

/// How many markers a project's clip has; where it has none, that its titles have some. Nothing
/// where none has.
std::optional<std::string> markersText(const Markers& markers);

/// A row of the table "Actual camera usage", as texts.
struct UsageRow {
    std::string camera;
    std::string screenTime; // "12.50 sec"
    std::string share;      // of the whole project, "41.7%"
    std::string shots;

    bool operator==(const UsageRow&) const = default;
};

/// One row for each video angle, in angle order, also for those that the cuts never show.
std::vector<UsageRow> usageRows(const std::vector<Cut>& cuts, const Project& project);

} // namespace shotweaver
