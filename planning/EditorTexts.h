#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/ImportedProject.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// An angle's name, followed by its camera names in brackets when it has any; the identifier itself
/// when no angle has it.
std::string angleLabel(std::string_view id, const ImportedProject& imported);

/// The line above the cut list: number of cuts, the main camera's share of the project in whole
/// percent, the audio angle.
std::string summaryLine(const std::vector<Cut>& cuts, const EditSettings& settings,
                        const ImportedProject& imported, const CutEngine& engine);

/// A row of the table "Actual camera usage", as texts.
struct UsageRow {
    std::string camera;
    std::string screenTime; // "12.50 sec"
    std::string share;      // of the whole project, "41.7%"
    std::string shots;

    bool operator==(const UsageRow&) const = default;
};

/// One row for each video angle, in angle order, also for those that the cuts never show.
std::vector<UsageRow> usageRows(const std::vector<Cut>& cuts, const ImportedProject& imported,
                                const CutEngine& engine);

/// Points that the usage table's frame is high for so many cameras; what does not fit scrolls.
int usageTableHeight(std::size_t cameras);

} // namespace shotweaver
