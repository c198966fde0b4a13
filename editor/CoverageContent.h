#pragma once

#include "engine/EditSettings.h"
#include "engine/FrameRange.h"
#include "engine/Project.h"
#include "engine/generation/CoverageReport.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// A row of the box "Recording coverage".
struct CoverageBar {
    enum class Colour { used, unused, audio, gap };

    std::string label;
    Colour colour = Colour::used;
    Coverage ranges; // of the project

    bool operator==(const CoverageBar&) const = default;
};

/// What stands under the bars.
struct CoverageSummary {
    enum class Kind { message, gaps, complete };

    Kind kind = Kind::complete;
    std::string text;              // for gaps the list's heading
    std::vector<std::string> gaps; // the list's lines

    bool operator==(const CoverageSummary&) const = default;
};

/// The box "Recording coverage". All bars share the project's axis.
struct CoverageContent {
    std::string axisStart; // timecodes
    std::string axisEnd;
    std::vector<CoverageBar> angles; // the video angles
    std::optional<CoverageBar> audio;
    CoverageBar gaps;
    CoverageSummary summary;
};

/// `report` is the coverage of the planned selection; `locale` (a BCP 47 tag) writes seconds.
CoverageContent coverageContent(const SelectedCoverage& report, const EditSettings& settings,
                                const Project& project, const std::string& locale);

/// Every angle that the settings show somewhere: the main camera, the included additional ones,
/// those of enabled bookends and of fixed sections.
bool isUsedByPlan(const EditSettings& settings, const std::string& camera);

/// A range as a tooltip tells it: "00:00:10:00 to 00:00:20:00".
std::string rangeText(const FrameRange& range, const CutEngine& engine);

/// A gap of the planned selection as a tooltip tells it: its range, and which cameras recorded
/// there, throughout or in a part.
std::string gapText(const FrameRange& gap, const Project& project);

/// What a bar's ranges are to a screen reader.
std::string accessibleRanges(const Coverage& ranges, const CutEngine& engine);

} // namespace shotweaver
