#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// The coverage of a planned selection: the parts of the project that have recorded video, neither
/// sorted nor merged, or a message in their place.
struct SelectedCoverage {
    std::vector<FrameRange> covered;
    std::optional<std::string> message;

    bool operator==(const SelectedCoverage&) const = default;
};

/// The parts of the project that a selection has footage for. `cameras` is the main camera followed
/// by the additional ones. Inside of fixed sections, kept shots and bookends only their own camera
/// counts.
SelectedCoverage selectedCoverage(const CutEngine& engine, const std::vector<std::string>& cameras,
                                  const std::optional<BookendShot>& opening,
                                  const std::optional<BookendShot>& closing,
                                  const std::vector<FixedCameraSection>& sections,
                                  const std::vector<Cut>& kept = {});

} // namespace shotweaver
