#include "host/DesktopWorkspace.h"

#include "host/OpenError.h"
#include "platform/DesktopEntry.h"
#include "platform/Files.h"
#include "platform/PlatformError.h"
#include "platform/Programs.h"

#include <fmt/format.h>

#include <utility>

namespace shotweaver {

DesktopWorkspace::DesktopWorkspace(FileCalls& calls, Environment environment)
    : calls_(calls), environment_(std::move(environment)) {}

std::optional<std::string>
DesktopWorkspace::urlForApplication(const std::string& bundleIdentifier) {
    const auto entry = findDesktopEntry(calls_, environment_, bundleIdentifier + ".desktop");
    return entry ? std::optional(entry->path) : std::nullopt;
}

void DesktopWorkspace::open(const std::string& file, const std::string& application,
                            OpenCompletion completion) {
    std::optional<std::string> problem;
    try {
        problem = start(application, file);
    } catch (const PlatformError& failure) {
        problem = failure.what();
    }
    completion(problem ? std::optional(openError(*problem)) : std::nullopt);
}

std::optional<std::string> DesktopWorkspace::start(const std::string& application,
                                                   const std::string& file) {
    const auto entry = parseDesktopEntry(readFile(calls_, application), application);
    auto command = entry ? openCommand(*entry, file) : std::nullopt;
    if (!command) return fmt::format("“{}” has no command that opens a file.", application);
    const std::optional<std::string> program = findProgram(command->front(), environment_);
    if (!program) return fmt::format("“{}” could not be found.", command->front());
    command->front() = *program;
    startProgram(*command, entry->folder);
    return std::nullopt;
}

} // namespace shotweaver
