#pragma once

#include "engine/Project.h"

#include <string>
#include <vector>

namespace shotweaver {

/// Final Cut Pro imports no document that does not say its version.
inline constexpr const char* missingVersion =
    "The imported XML does not state its FCPXML version, so no project can be made from it. Export "
    "XML again from Final Cut.";

/// What a user of an export should know before it is made.
struct Finding {
    enum class Kind {
        refused, // Final Cut's import fails, or our own export
        changed  // it comes in otherwise than it was
    };

    Kind kind = Kind::refused;
    std::string text; // what, where, and what to do: one line of sentences

    bool operator==(const Finding&) const = default;
};

/// Looks for what a rough edit of the project takes along and Final Cut does not, in document
/// order. Only what an export carries is judged; what concerns a single angle says so.
std::vector<Finding> preflight(const Project& project);

} // namespace shotweaver
