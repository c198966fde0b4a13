#include "engine/CutEngine.h"
#include "engine/FinalCutImportError.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace shotweaver {

namespace {

struct TimecodeFields {
    std::int64_t hours;
    std::int64_t minutes;
    std::int64_t seconds;
    std::int64_t frames;
};

bool isDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::optional<TimecodeFields> readFields(std::string_view text) {
    std::string separated(trimmed(text));
    std::replace(separated.begin(), separated.end(), ';', ':');
    const auto pieces = split(separated, ':');
    std::array<std::int64_t, 4> fields{};
    if (pieces.size() != fields.size()) return std::nullopt;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto field = isDigits(pieces[i]) ? parseInteger(pieces[i]) : std::nullopt;
        if (!field) return std::nullopt;
        fields[i] = *field;
    }
    if (fields[0] > 9999 || fields[1] > 59 || fields[2] > 59) return std::nullopt;
    return TimecodeFields{fields[0], fields[1], fields[2], fields[3]};
}

/// Counted as if drop-frame timecode skipped none.
std::int64_t labelNumber(const TimecodeFields& fields, std::int64_t rate) {
    return ((fields.hours * 60 + fields.minutes) * 60 + fields.seconds) * rate + fields.frames;
}

} // namespace

std::string CutEngine::timecode(std::int64_t frame) const {
    return frameDuration.timecode(timelineStart + frame, dropFrame);
}

std::int64_t CutEngine::frameForTimecode(std::string_view text) const {
    const auto fields = readFields(text);
    if (!fields)
        throw FinalCutImportError::invalid(
            "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00.");
    const std::int64_t rate = frameDuration.nominalRate();
    if (fields->frames >= rate)
        throw FinalCutImportError::invalid(
            fmt::format("The frame field must be less than {} for this project.", rate));
    const std::int64_t label = labelNumber(*fields, rate);
    const std::int64_t frame = frameDuration.frameOfLabel(label, dropFrame);
    if (frame == frameDuration.frameOfLabel(label + 1, dropFrame))
        throw FinalCutImportError::invalid("That frame label is skipped in drop-frame timecode.");
    return frame - timelineStart;
}

std::optional<std::string> CutEngine::labelAfterSkipped(std::string_view text) const {
    const auto fields = readFields(text);
    const std::int64_t rate = frameDuration.nominalRate();
    if (!fields || fields->frames >= rate) return std::nullopt;
    const std::int64_t label = labelNumber(*fields, rate);
    const std::int64_t frame = frameDuration.frameOfLabel(label, dropFrame);
    if (frame != frameDuration.frameOfLabel(label + 1, dropFrame)) return std::nullopt;
    return frameDuration.timecode(frame, dropFrame);
}

std::int64_t CutEngine::firstFrameLabelled(std::int64_t label) const {
    return frameDuration.frameOfLabel(label, dropFrame) - timelineStart;
}

} // namespace shotweaver
