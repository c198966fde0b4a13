#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"
#include "platform/Locale.h"

#include <cstddef>
#include <memory>
#include <string>

namespace shotweaver {

/// A row of the cut list, as texts.
struct CutRow {
    std::string camera;
    std::string start;    // timecode
    std::string duration; // seconds, in the locale's style

    bool operator==(const CutRow&) const = default;
};

/// A followed marker in one line: "Marker “Band” · 01:00:10:00".
std::string noteLine(const CameraNote& note, const Project& project);

/// Writes cuts of one project. Making one costs much more than writing a cut.
class CutTexts {
  public:
    /// `locale` is a BCP 47 tag.
    CutTexts(std::shared_ptr<const Project> project, const std::string& locale);

    CutRow row(const Cut& cut) const;
    /// A cut in one line: "Wide (A7) · 01:00:10:00 · 12.5 seconds".
    std::string line(const Cut& cut) const;

  private:
    std::shared_ptr<const Project> project_;
    DecimalFormat number_;
};

/// Points that the usage table's frame is high for so many cameras; what does not fit scrolls.
int usageTableHeight(std::size_t cameras);

} // namespace shotweaver
