#pragma once

#include "cli/Command.h"
#include "engine/CutEngine.h"
#include "engine/EditRevision.h"
#include "engine/ImportedProject.h"
#include "platform/ByteSource.h"

#include <string>

namespace shotweaver {

struct ExportOptions {
    std::string project;
    std::string revision; // a file, or "-"
    std::string output;   // folder
};

/// Exports the cuts of a stored revision.
CommandResult runExport(const ExportOptions& options, ByteSource& in);

/// Writes a revision's export and settings record into a folder. Gives their paths, a line each,
/// the XML first.
std::string exportRevision(const EditRevision& revision, const ImportedProject& imported,
                           const CutEngine& engine, const std::string& folder);

} // namespace shotweaver
