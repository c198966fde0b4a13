#include "host/MacWorkspace.h"

#include "host/OpenError.h"
#include "platform/PlatformError.h"
#include "platform/Programs.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <chrono>
#include <utility>

namespace shotweaver {

namespace {

std::optional<HostError> run(const std::vector<std::string>& command) {
    try {
        const ProgramResult result = runProgram(command);
        if (result.status == 0) return std::nullopt;
        const std::string_view errors = trimmed(result.errors);
        return HostError{"Shotweaver", result.status,
                         errors.empty() ? fmt::format("“{}” ended with status {}.", command.front(),
                                                      result.status)
                                        : std::string(errors)};
    } catch (const PlatformError& failure) {
        return openError(failure.what());
    }
}

bool isOver(const std::future<void>& future) {
    return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

} // namespace

MacWorkspace::MacWorkspace(Environment environment, std::string finder, std::string opener)
    : environment_(std::move(environment)), finder_(std::move(finder)), opener_(std::move(opener)) {
}

std::optional<std::string> MacWorkspace::urlForApplication(const std::string& bundleIdentifier) {
    const std::optional<std::string> finder = findProgram(finder_, environment_);
    if (!finder) return std::nullopt;
    const std::string query = fmt::format("kMDItemCFBundleIdentifier == '{}'", bundleIdentifier);
    const ProgramResult found = runProgram({*finder, query});
    const std::string_view place = split(found.output, '\n').front();
    const bool isFound = found.status == 0 && !place.empty();
    if (!isFound && !findProgram(opener_, environment_)) return std::nullopt;
    const std::string application = isFound ? std::string(place) : bundleIdentifier;
    identifiers_[application] = bundleIdentifier;
    return application;
}

void MacWorkspace::open(const std::string& file, const std::string& application,
                        OpenCompletion completion) {
    const std::optional<std::string> opener = findProgram(opener_, environment_);
    if (!opener) {
        completion(openError(fmt::format("“{}” could not be found.", opener_)));
        return;
    }
    // By identifier, so that the system picks among several copies.
    const std::string& identifier = identifiers_.at(application);
    const bool isFound = application != identifier;
    std::vector<std::string> command{*opener, "-b", identifier, file};
    std::erase_if(running_, isOver);
    running_.push_back(std::async(std::launch::async, [command = std::move(command), isFound,
                                                       completion = std::move(completion)] {
        const std::optional<HostError> error = run(command);
        completion(error && !isFound ? notFoundError() : error);
    }));
}

} // namespace shotweaver
