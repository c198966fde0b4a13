#include "engine/EditSettings.h"

#include "engine/FinalCutImportError.h"

#include <algorithm>

namespace shotweaver {

namespace {

/// False for a not-a-number too.
bool isWithin(double value, double lower, double upper) {
    return value >= lower && value <= upper;
}

bool areWithin(const AngleNumbers& numbers, double lower, double upper) {
    return std::all_of(numbers.begin(), numbers.end(),
                       [&](const auto& entry) { return isWithin(entry.second, lower, upper); });
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

void EditSettings::validate() const {
    const bool isValid = isWithin(mainShare, 10, 90) && isWithin(averageShot, 4, 20) &&
                         isWithin(mainMinimum, 1, 120) && isWithin(mainMaximum, mainMinimum, 120) &&
                         isWithin(otherMinimum, 1, 120) &&
                         isWithin(otherMaximum, otherMinimum, 120) &&
                         isWithin(opening.seconds, 1, 120) && isWithin(closing.seconds, 1, 120) &&
                         areWithin(frequencies, 1, 10) && areWithin(returnTimes, 0, 600);
    if (!isValid)
        throw FinalCutImportError::invalid(
            "The saved session contains invalid settings. Its stored data has been kept.");
}

} // namespace shotweaver
