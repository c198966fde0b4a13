#include "cli/SettingsFlags.h"

#include "engine/AngleNames.h"
#include "planning/ProjectDefaults.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

namespace shotweaver {

namespace {

struct AngleValue {
    std::string angle;
    double value;
};

double readNumber(std::string_view flag, std::string_view text) {
    const auto number = parseDecimal(text);
    if (!number) throw UsageError(fmt::format("{}: \"{}\" is not a number.", flag, text));
    return *number;
}

/// "10-25". An exponent may hold a hyphen of its own, so the first that leaves two numbers counts.
SecondsRange readRange(std::string_view flag, std::string_view text) {
    for (std::size_t hyphen = text.find('-', 1); hyphen != std::string_view::npos;
         hyphen = text.find('-', hyphen + 1)) {
        const auto lower = parseDecimal(text.substr(0, hyphen));
        const auto upper = parseDecimal(text.substr(hyphen + 1));
        if (!lower || !upper) continue;
        if (*lower > *upper)
            throw UsageError(
                fmt::format("{}: the minimum in \"{}\" is above the maximum.", flag, text));
        return {*lower, *upper};
    }
    throw UsageError(fmt::format("{}: \"{}\" is not MIN-MAX in seconds, as in 10-25.", flag, text));
}

/// Puts flags into settings, with the project that their angles belong to.
class FlagReader {
  public:
    FlagReader(EditSettings& settings, const Project& project)
        : settings_(settings), project_(project), videoNames_(project.videoAngles),
          audioNames_(project.audioAngles) {}

    void readCameras(const SettingsFlags& flags);
    void readPacing(const SettingsFlags& flags);
    void readBookends(const SettingsFlags& flags);
    void readSections(const SettingsFlags& flags);

  private:
    /// An identifier of any angle, or the name of one among `named`.
    std::string angle(std::string_view flag, std::string_view text, const AngleNames& named) const;
    std::string camera(std::string_view flag, std::string_view text) const {
        return angle(flag, text, videoNames_);
    }
    AngleValue angleValue(std::string_view flag, std::string_view text) const;
    SectionDraft section(std::string_view text) const;

    EditSettings& settings_;
    const Project& project_;
    AngleNames videoNames_;
    AngleNames audioNames_;
};

std::string FlagReader::angle(std::string_view flag, std::string_view text,
                              const AngleNames& named) const {
    if (project_.angle(text)) return std::string(text);
    if (auto found = named.idOf(text)) return *found;
    throw UsageError(
        named.isRepeated(text)
            ? fmt::format("{}: several angles are named \"{}\". Give the angle's identifier, which "
                          "inspect prints.",
                          flag, text)
            : fmt::format("{}: no {} angle has the identifier or name \"{}\". inspect prints them.",
                          flag, &named == &audioNames_ ? "audio" : "video", text));
}

AngleValue FlagReader::angleValue(std::string_view flag, std::string_view text) const {
    const std::size_t equals = text.rfind('=');
    if (equals == std::string_view::npos)
        throw UsageError(fmt::format("{}: \"{}\" is not ANGLE=NUMBER.", flag, text));
    const double value = readNumber(flag, text.substr(equals + 1));
    return {camera(flag, text.substr(0, equals)), value};
}

SectionDraft FlagReader::section(std::string_view text) const {
    constexpr std::string_view flag = "--section";
    const auto pieces = split(text, ',');
    if (pieces.size() < 3)
        throw UsageError(
            fmt::format("{}: \"{}\" is not ANGLE,START,END or ANGLE,START,END,NAME.", flag, text));
    // The name is the rest, commas and all.
    const std::size_t head = pieces[0].size() + pieces[1].size() + pieces[2].size() + 3;
    const std::string_view name = pieces.size() > 3 ? text.substr(head) : std::string_view();
    if (!isUTF8(text)) throw UsageError(fmt::format("{}: the text is not UTF-8.", flag));
    return {secureUUIDs()(), std::string(name), camera(flag, pieces[0]), std::string(pieces[1]),
            std::string(pieces[2])};
}

void FlagReader::readCameras(const SettingsFlags& flags) {
    if (flags.mainCamera)
        chooseMainCamera(settings_, camera("--main-camera", *flags.mainCamera), project_);
    if (flags.otherCameras) {
        settings_.otherCameras.clear();
        for (const std::string_view name : split(*flags.otherCameras, ','))
            settings_.otherCameras.insert(camera("--other-cameras", name));
    }
    if (flags.audio) settings_.audio = angle("--audio", *flags.audio, audioNames_);
}

void FlagReader::readPacing(const SettingsFlags& flags) {
    if (flags.mainShare) settings_.mainShare = readNumber("--main-share", *flags.mainShare);
    if (flags.mainRange) {
        const SecondsRange range = readRange("--main-range", *flags.mainRange);
        settings_.mainMinimum = range.lower;
        settings_.mainMaximum = range.upper;
    }
    if (flags.otherRange) {
        const SecondsRange range = readRange("--other-range", *flags.otherRange);
        settings_.otherMinimum = range.lower;
        settings_.otherMaximum = range.upper;
    }
    if (flags.doubleMain) settings_.doubleMain = true;
    for (const std::string& text : flags.frequencies) {
        const AngleValue entry = angleValue("--frequency", text);
        settings_.frequencies[entry.angle] = entry.value;
    }
    for (const std::string& text : flags.returnTimes) {
        const AngleValue entry = angleValue("--return-time", text);
        settings_.returnTimes[entry.angle] = entry.value;
    }
}

void FlagReader::readBookends(const SettingsFlags& flags) {
    if (flags.opening) {
        const AngleValue shot = angleValue("--opening", *flags.opening);
        settings_.opening = {true, shot.angle, shot.value};
    }
    if (flags.closing) {
        const AngleValue shot = angleValue("--closing", *flags.closing);
        settings_.closing = {true, shot.angle, shot.value};
    }
}

void FlagReader::readSections(const SettingsFlags& flags) {
    for (const std::string& text : flags.sections)
        settings_.sections.push_back(section(text));
}

} // namespace

EditSettings withFlags(EditSettings settings, const SettingsFlags& flags, const Project& project) {
    FlagReader reader(settings, project);
    reader.readCameras(flags);
    reader.readPacing(flags);
    reader.readBookends(flags);
    reader.readSections(flags);
    return settings;
}

void requireOrderedRanges(const EditSettings& settings) {
    const auto require = [](const char* which, double minimum, double maximum) {
        if (minimum > maximum)
            throw UsageError(fmt::format(
                "--settings: the shortest {} shot, {} seconds, is longer than the longest, {}.",
                which, shortestDecimal(minimum), shortestDecimal(maximum)));
    };
    require("main", settings.mainMinimum, settings.mainMaximum);
    require("other", settings.otherMinimum, settings.otherMaximum);
}

} // namespace shotweaver
