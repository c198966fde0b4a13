#pragma once

#include "engine/ImportedProject.h"
#include "engine/import/Resources.h"
#include "platform/XmlIntake.h"

#include <pugixml.hpp>

#include <cstddef>
#include <string_view>

namespace shotweaver {

/// A document that passed every check of the import: one project whose timeline holds one multicam
/// clip and nothing else. The handles are nodes of `document`.
struct ProjectImport {
    XmlDocument document;
    std::size_t documentSize = 0; // bytes read
    pugi::xml_node root;
    pugi::xml_node project;
    pugi::xml_node sequence;
    pugi::xml_node multicamClip; // the spine's one "mc-clip"
    pugi::xml_node multicam;
    pugi::xml_node projectFormat;
    Resources resources;
    ImportedProject summary;
};

/// Reads and checks an FCPXML export. Throws `FinalCutImportError` with the sentence of the first
/// failed check, or `PlatformError` when the bytes are not well-formed XML. Recordings without a
/// media location are listed in the summary, not refused.
ProjectImport readProject(ByteSource& source);
ProjectImport readProject(std::string_view bytes);

/// The summary alone.
ImportedProject inspectProject(std::string_view bytes);

} // namespace shotweaver
