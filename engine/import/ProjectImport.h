#pragma once

#include "engine/ImportedProject.h"
#include "engine/import/Resources.h"
#include "platform/ByteSource.h"
#include "platform/XmlDocument.h"

#include <memory>
#include <string_view>

namespace shotweaver {

/// A document that passed every check of the import: one project whose timeline holds one multicam
/// clip and nothing else. The handles are nodes of `document`.
struct ProjectImport {
    std::unique_ptr<const XmlDocument> document;
    XmlNode root;
    XmlNode project;
    XmlNode sequence;
    XmlNode multicamClip; // the spine's one "mc-clip"
    XmlNode multicam;
    XmlNode projectFormat;
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
