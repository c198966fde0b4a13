#pragma once

#include "engine/CutEngine.h"
#include "engine/ImportedProject.h"
#include "engine/import/Markers.h"
#include "engine/import/ProjectImport.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace shotweaver {

/// A project that was imported and accepted: what is shown of it, and what edits it. Never changed
/// once built.
class Project {
  public:
    /// Reads and checks an FCPXML export. Throws what the import and the engine throw.
    explicit Project(ByteSource& source) : Project(readProject(source)) {}
    explicit Project(std::string_view bytes) : Project(readProject(bytes)) {}

    /// The same from an export that the import has accepted already.
    explicit Project(ProjectImport intake);

    ImportedProject summary;
    CutEngine engine;
    std::vector<ImportedAngle> videoAngles; // with picture somewhere in the project, in angle order
    std::vector<ImportedAngle> audioAngles; // with sound somewhere in the project, in angle order
    Markers markers;

    /// Null when no angle has the identifier.
    const ImportedAngle* angle(std::string_view id) const;

    /// An angle's name; the identifier itself when no angle has it.
    std::string name(std::string_view id) const;

    /// An angle's name, followed by its camera names in brackets when it has any; the identifier
    /// itself when no angle has it.
    std::string label(std::string_view id) const;

    /// True for the identifiers of `videoAngles`, and of `audioAngles`.
    bool isVideoAngle(std::string_view id) const;
    bool isAudioAngle(std::string_view id) const;

  private:
    std::unordered_map<std::string_view, const ImportedAngle*> angles_; // of the summary
};

} // namespace shotweaver
