#pragma once

#include "cli/Command.h"
#include "engine/EditRevision.h"
#include "engine/Project.h"

#include <string>

namespace shotweaver {

/// "export": exports the cuts of a stored revision.
Verb addExport(CLI::App& program);

/// Where an export goes.
struct ExportFolder {
    std::string path;
    bool open = false; // hand the XML to Final Cut Pro afterwards
};

/// Writes a revision's export and its settings record into a folder and puts their paths into the
/// result, a line each, the XML first; then hands the XML over where that was asked for, whose
/// failure is the result's.
void exportRevision(const EditRevision& revision, const KeptShots& kept, const Project& project,
                    const ExportFolder& output, const CommandContext& context,
                    CommandResult& result);

} // namespace shotweaver
