#pragma once

#include "cli/Command.h"
#include "engine/EditRevision.h"
#include "engine/Project.h"
#include "host/Workspace.h"
#include "platform/ByteSource.h"

#include <string>

namespace shotweaver {

/// Where an export goes.
struct ExportFolder {
    std::string path;
    bool open = false; // hand the XML to Final Cut Pro afterwards
};

struct ExportOptions {
    std::string project;
    std::string revision; // a file, or "-"
    ExportFolder output;
};

/// Exports the cuts of a stored revision.
CommandResult runExport(const ExportOptions& options, ByteSource& in, Workspace& workspace);

/// Writes a revision's export and settings record into a folder and puts their paths into the
/// result, a line each, the XML first; then hands the XML over where that was asked for, whose
/// failure is the result's.
void exportRevision(const EditRevision& revision, const Project& project,
                    const ExportFolder& output, Workspace& workspace, CommandResult& result);

} // namespace shotweaver
