#include "engine/EditSettings.h"

#include "engine/FinalCutImportError.h"
#include "engine/SettingLimits.h"

#include <algorithm>
#include <initializer_list>

namespace shotweaver {

namespace {

bool areWithin(const AngleNumbers& numbers, const Limits& limits) {
    return std::all_of(numbers.begin(), numbers.end(),
                       [&](const auto& entry) { return limits.contains(entry.second); });
}

} // namespace

double numberFor(const AngleNumbers& numbers, std::string_view angle, double fallback) {
    const auto found = numbers.find(angle);
    return found == numbers.end() ? fallback : found->second;
}

void setMinimum(double& minimum, double& maximum, double seconds) {
    minimum = seconds;
    maximum = std::max(maximum, seconds);
}

void setMaximum(double& minimum, double& maximum, double seconds) {
    maximum = seconds;
    minimum = std::min(minimum, seconds);
}

std::optional<ReversedRange> reversedRange(const EditSettings& settings) {
    if (settings.mainMinimum > settings.mainMaximum)
        return ReversedRange{true, settings.mainMinimum, settings.mainMaximum};
    if (settings.otherMinimum > settings.otherMaximum)
        return ReversedRange{false, settings.otherMinimum, settings.otherMaximum};
    return std::nullopt;
}

void EditSettings::validate() const {
    const auto areShotLengths = [](std::initializer_list<double> seconds) {
        return std::all_of(seconds.begin(), seconds.end(),
                           [](double each) { return limits::shotSeconds.contains(each); });
    };
    const bool isValid =
        limits::mainShare.contains(mainShare) && limits::averageShot.contains(averageShot) &&
        areShotLengths({mainMinimum, mainMaximum, otherMinimum, otherMaximum, opening.seconds,
                        closing.seconds}) &&
        !reversedRange(*this) && areWithin(frequencies, limits::frequency) &&
        areWithin(returnTimes, limits::returnSeconds) && cutTimes.size() <= limits::cutTimes;
    if (!isValid)
        throw FinalCutImportError::invalid(
            "The saved session contains invalid settings. Its stored data has been kept.");
}

} // namespace shotweaver
