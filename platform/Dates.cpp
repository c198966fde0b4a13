#include "platform/Dates.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace shotweaver {

namespace {

using std::chrono::sys_days;
using std::chrono::year;

constexpr auto epoch2001 = sys_days{year{2001} / 1 / 1};

constexpr std::int64_t secondsFrom2001To(sys_days day) {
    return std::chrono::duration_cast<std::chrono::seconds>(day - epoch2001).count();
}

constexpr std::int64_t firstSecond = secondsFrom2001To(sys_days{year{0} / 1 / 1});
constexpr std::int64_t lastSecond = secondsFrom2001To(sys_days{year{10000} / 1 / 1}) - 1;

} // namespace

double secondsSince2001Now() {
    const auto sinceEpoch = std::chrono::system_clock::now() - epoch2001;
    return std::chrono::duration<double>(sinceEpoch).count();
}

std::string iso8601(double secondsSince2001) {
    // The negated comparison sends a not-a-number to the first second too.
    double whole = std::floor(secondsSince2001);
    if (!(whole > static_cast<double>(firstSecond))) whole = static_cast<double>(firstSecond);
    whole = std::min(whole, static_cast<double>(lastSecond));

    const auto time = epoch2001 + std::chrono::seconds{static_cast<std::int64_t>(whole)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clock{time - day};
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                       clock.hours().count(), clock.minutes().count(), clock.seconds().count());
}

} // namespace shotweaver
