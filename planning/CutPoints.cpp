#include "planning/CutPoints.h"

#include "engine/FinalCutImportError.h"
#include "engine/SettingLimits.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

namespace shotweaver {

namespace {

// More than a time and the beginning of its label need.
constexpr std::size_t longestLine = 4096;
constexpr std::size_t quotedCharacters = 60;

/// Lines that end with a line feed, a carriage return or both.
class LineSource {
  public:
    explicit LineSource(ByteSource& source) : source_(source) {}

    /// The next line, by its beginning where it is long; nothing after the last.
    std::optional<std::string_view> next() {
        line_.clear();
        ++number_;
        bool hasSome = false;
        while (const auto byte = nextByte()) {
            const bool endsPair = *byte == '\n' && previous_ == '\r' && !hasSome;
            previous_ = *byte;
            if (endsPair) continue;
            hasSome = true;
            if (*byte == '\n' || *byte == '\r') return line_;
            if (line_.size() < longestLine) line_ += *byte;
        }
        return hasSome ? std::optional<std::string_view>(line_) : std::nullopt;
    }

    /// Of the line that was given last, from 1.
    std::size_t number() const { return number_; }

  private:
    std::optional<char> nextByte() {
        if (at_ == end_) {
            end_ = source_.read(block_.data(), block_.size());
            at_ = 0;
            if (end_ == 0) return std::nullopt;
        }
        return block_[at_++];
    }

    ByteSource& source_;
    std::array<char, std::size_t{1} << 16U> block_{};
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    std::string line_;
    std::size_t number_ = 0;
    char previous_ = 0;
};

/// A number as JSON has it.
std::optional<double> jsonDecimal(std::string_view text) {
    const std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
    const bool hasNeedlessZero =
        digits.size() > 1 && digits[0] == '0' && digits[1] >= '0' && digits[1] <= '9';
    if (text.starts_with('+') || hasNeedlessZero) return std::nullopt;
    return parseDecimal(text);
}

std::optional<double> timeIn(std::string_view text, const CutEngine& engine) {
    if (const auto seconds = jsonDecimal(trimmed(text.substr(0, text.find('\t'))))) return seconds;
    try {
        return engine.seconds(engine.frameForTimecode(text));
    } catch (const FinalCutImportError&) {
        return std::nullopt;
    }
}

[[noreturn]] void refuseLine(const std::string& name, std::size_t number, std::string_view text) {
    if (!isUTF8(text) || text.find('\0') != std::string_view::npos)
        throw FinalCutImportError::invalid(
            fmt::format("{}, line {} is not text in UTF-8. Save the file as UTF-8.", name, number));
    const std::string_view quoted = firstCharacters(text, quotedCharacters);
    throw FinalCutImportError::invalid(fmt::format("{}, line {}: “{}{}” is not a time.", name,
                                                   number, quoted,
                                                   quoted.size() < text.size() ? "…" : ""));
}

/// The project's frame nearest to a time, where it is inside.
std::optional<std::int64_t> frameAt(double seconds, const CutEngine& engine) {
    const double frame = std::round(engine.frameDuration.frames(seconds));
    if (!(frame > 0 && frame < static_cast<double>(engine.length))) return std::nullopt;
    return static_cast<std::int64_t>(frame);
}

} // namespace

std::vector<std::int64_t> cutPoints(const EditSettings& settings, const Project& project) {
    std::vector<std::int64_t> points;
    if (settings.cutAtMarkers) points = project.markers.cutPoints;
    for (const double seconds : settings.cutTimes)
        if (const auto frame = frameAt(seconds, project.engine)) points.push_back(*frame);
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

bool isAtMarker(std::int64_t frame, const EditSettings& settings, const Project& project) {
    const std::vector<std::int64_t>& points = project.markers.cutPoints;
    return settings.cutAtMarkers && std::binary_search(points.begin(), points.end(), frame);
}

const CameraNote* noteAt(std::int64_t frame, const EditSettings& settings, const Project& project) {
    const std::vector<CameraNote>& notes = project.markers.notes;
    const auto found =
        std::lower_bound(notes.begin(), notes.end(), frame,
                         [](const CameraNote& note, std::int64_t at) { return note.frame < at; });
    const bool isFollowed = settings.followMarkers && found != notes.end() && found->frame == frame;
    return isFollowed ? &*found : nullptr;
}

std::vector<double> readCutTimes(ByteSource& source, const std::string& name,
                                 const Project& project) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    std::vector<double> times;
    LineSource lines(source);
    while (auto line = lines.next()) {
        if (lines.number() == 1 && line->starts_with(mark)) line->remove_prefix(mark.size());
        const std::string_view text = trimmed(*line);
        if (text.empty() || text.front() == '#' || text.front() == '\\') continue;
        const auto seconds = timeIn(text, project.engine);
        if (!seconds) refuseLine(name, lines.number(), text);
        if (times.size() == limits::cutTimes)
            throw FinalCutImportError::invalid(fmt::format("{} has more than 20,000 times.", name));
        times.push_back(*seconds);
    }
    return times;
}

} // namespace shotweaver
