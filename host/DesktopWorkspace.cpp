#include "host/DesktopWorkspace.h"

#include "host/OpenError.h"
#include "platform/DesktopApplications.h"
#include "platform/PlatformError.h"

#include <utility>

namespace shotweaver {

DesktopWorkspace::DesktopWorkspace(Environment environment)
    : environment_(std::move(environment)) {}

std::optional<std::string>
DesktopWorkspace::urlForApplication(const std::string& bundleIdentifier) {
    return findDesktopEntry(environment_, bundleIdentifier + ".desktop");
}

void DesktopWorkspace::open(const std::string& file, const std::string& application,
                            OpenCompletion completion) {
    std::optional<HostError> error;
    try {
        openWithDesktopEntry(application, file, environment_);
    } catch (const PlatformError& failure) {
        error = openError(failure.what());
    }
    completion(error);
}

} // namespace shotweaver
