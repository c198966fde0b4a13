#include "cli/SettingsFlags.h"

#include "cli/Grammar.h"
#include "engine/AngleNames.h"
#include "engine/SettingLimits.h"
#include "planning/CutPoints.h"
#include "planning/ProjectDefaults.h"
#include "platform/Files.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace shotweaver {

namespace {

struct AngleValue {
    std::string angle;
    double value;
};

/// Reads what was typed behind one flag.
class FlagText {
  public:
    FlagText(const char* flag, std::string_view text, const Project& project,
             const AngleNames& videoNames, const AngleNames& audioNames, FileCalls& files)
        : flag_(flag), text_(text), project_(project), video_(videoNames), audio_(audioNames),
          files_(files) {}

    const Project& project() const { return project_; }

    double number() const { return numberIn(text_); }
    SecondsRange range() const;
    AngleValue angleValue() const;
    SectionDraft section() const;
    std::vector<double> times() const;

    /// An identifier of any angle, or the name of one with picture, or with sound.
    std::string camera() const { return angleIn(text_, video_, "video"); }
    std::string audio() const { return angleIn(text_, audio_, "audio"); }
    std::set<std::string, std::less<>> cameras() const;

  private:
    double numberIn(std::string_view text) const;
    std::string cameraIn(std::string_view text) const { return angleIn(text, video_, "video"); }
    std::string angleIn(std::string_view text, const AngleNames& named, const char* kind) const;

    const char* flag_;
    std::string_view text_;
    const Project& project_;
    const AngleNames& video_;
    const AngleNames& audio_;
    FileCalls& files_;
};

double FlagText::numberIn(std::string_view text) const {
    const auto number = parseDecimal(text);
    if (!number) throw UsageError(fmt::format("{}: \"{}\" is not a number.", flag_, text));
    return *number;
}

/// "10-25". An exponent may hold a hyphen of its own, so the first that leaves two numbers counts.
SecondsRange FlagText::range() const {
    for (std::size_t hyphen = text_.find('-', 1); hyphen != std::string_view::npos;
         hyphen = text_.find('-', hyphen + 1)) {
        const auto lower = parseDecimal(text_.substr(0, hyphen));
        const auto upper = parseDecimal(text_.substr(hyphen + 1));
        if (!lower || !upper) continue;
        if (*lower > *upper)
            throw UsageError(
                fmt::format("{}: the minimum in \"{}\" is above the maximum.", flag_, text_));
        return {*lower, *upper};
    }
    throw UsageError(
        fmt::format("{}: \"{}\" is not MIN-MAX in seconds, as in 10-25.", flag_, text_));
}

std::string FlagText::angleIn(std::string_view text, const AngleNames& named,
                              const char* kind) const {
    if (project_.angle(text)) return std::string(text);
    if (auto found = named.idOf(text)) return *found;
    throw UsageError(
        named.isRepeated(text)
            ? fmt::format("{}: several angles are named \"{}\". Give the angle's identifier, which "
                          "inspect prints.",
                          flag_, text)
            : fmt::format("{}: no {} angle has the identifier or name \"{}\". inspect prints them.",
                          flag_, kind, text));
}

std::set<std::string, std::less<>> FlagText::cameras() const {
    std::set<std::string, std::less<>> cameras;
    for (const std::string_view name : split(text_, ','))
        cameras.insert(cameraIn(name));
    return cameras;
}

AngleValue FlagText::angleValue() const {
    const std::size_t equals = text_.rfind('=');
    if (equals == std::string_view::npos)
        throw UsageError(fmt::format("{}: \"{}\" is not ANGLE=NUMBER.", flag_, text_));
    const double value = numberIn(text_.substr(equals + 1));
    return {cameraIn(text_.substr(0, equals)), value};
}

SectionDraft FlagText::section() const {
    const auto pieces = split(text_, ',');
    if (pieces.size() < 3)
        throw UsageError(fmt::format("{}: \"{}\" is not ANGLE,START,END or ANGLE,START,END,NAME.",
                                     flag_, text_));
    // The name is the rest, commas and all.
    const std::size_t head = pieces[0].size() + pieces[1].size() + pieces[2].size() + 3;
    const std::string_view name = pieces.size() > 3 ? text_.substr(head) : std::string_view();
    if (!isUTF8(text_)) throw UsageError(fmt::format("{}: the text is not UTF-8.", flag_));
    return {secureUUIDs()(), std::string(name), cameraIn(pieces[0]), std::string(pieces[1]),
            std::string(pieces[2])};
}

std::vector<double> FlagText::times() const {
    const std::string path(text_);
    FileSource file(files_, path);
    return readCutTimes(file, path, project_);
}

constexpr const char* cameraGroup = "Cameras and audio";
constexpr const char* balanceGroup = "Balance and pacing";
constexpr const char* fixedGroup = "Fixed shots";

/// "1 to 120"
std::string words(const Limits& limits) {
    return fmt::format("{} to {}", limits.least, limits.most);
}

/// A flag, and what it does to the settings.
struct Flag {
    enum class Takes { nothing, one, several };

    const char* name;
    Takes takes;
    const char* form;
    const char* group;
    std::string help;
    void (*apply)(EditSettings& settings, const FlagText& typed);
};

/// In the order in which they are applied, and refused.
const std::vector<Flag>& settingsFlags() {
    using Takes = Flag::Takes;
    using S = EditSettings;
    using T = FlagText;
    static const S fresh;
    static const std::vector<Flag> flags{
        {"--main-camera", Takes::one, "A", cameraGroup,
         "The main camera; the former one becomes an additional camera",
         [](S& s, const T& typed) { chooseMainCamera(s, typed.camera(), typed.project()); }},
        {"--other-cameras", Takes::one, "A,B,..", cameraGroup, "Exactly these additional cameras",
         [](S& s, const T& typed) { s.otherCameras = typed.cameras(); }},
        {"--audio", Takes::one, "A", cameraGroup, "The angle that is heard throughout",
         [](S& s, const T& typed) { s.audio = typed.audio(); }},
        {"--main-share", Takes::one, "PERCENT", balanceGroup,
         fmt::format("Target screen time of the main camera, {} ({})", words(limits::mainShare),
                     fresh.mainShare),
         [](S& s, const T& typed) { s.mainShare = typed.number(); }},
        {"--main-range", Takes::one, "MIN-MAX", balanceGroup,
         fmt::format("Shot lengths of the main camera in seconds, {} ({}-{})",
                     words(limits::shotSeconds), fresh.mainMinimum, fresh.mainMaximum),
         [](S& s, const T& typed) {
             const SecondsRange range = typed.range();
             s.mainMinimum = range.lower;
             s.mainMaximum = range.upper;
         }},
        {"--other-range", Takes::one, "MIN-MAX", balanceGroup,
         fmt::format("Shot lengths of the other cameras in seconds, {} ({}-{})",
                     words(limits::shotSeconds), fresh.otherMinimum, fresh.otherMaximum),
         [](S& s, const T& typed) {
             const SecondsRange range = typed.range();
             s.otherMinimum = range.lower;
             s.otherMaximum = range.upper;
         }},
        {"--double-main", Takes::nothing, "", balanceGroup,
         "Hold one in four main camera shots twice as long",
         [](S& s, const T&) { s.doubleMain = true; }},
        {"--vary", Takes::nothing, "", balanceGroup,
         "Do not show the same additional camera twice in a row",
         [](S& s, const T&) { s.varyOthers = true; }},
        {"--cut-at-markers", Takes::nothing, "", balanceGroup,
         "Cut at the clip's markers where shot lengths allow",
         [](S& s, const T&) { s.cutAtMarkers = true; }},
        {"--follow-markers", Takes::nothing, "", balanceGroup,
         "Show a camera where a marker has its name",
         [](S& s, const T&) { s.followMarkers = true; }},
        {"--cut-points", Takes::one, "FILE", balanceGroup,
         "Cut at the times in a file where shot lengths allow: seconds or timecode, one a line",
         [](S& s, const T& typed) { s.cutTimes = typed.times(); }},
        {"--frequency", Takes::several, "A=W", cameraGroup,
         fmt::format("How often a camera is chosen, {} ({}); repeatable", words(limits::frequency),
                     defaultFrequency),
         [](S& s, const T& typed) {
             const AngleValue entry = typed.angleValue();
             s.frequencies[entry.angle] = entry.value;
         }},
        {"--return-time", Takes::several, "A=SECONDS", cameraGroup,
         fmt::format("Shortest wait before a camera comes back, {} ({}); repeatable",
                     words(limits::returnSeconds), defaultReturnTime),
         [](S& s, const T& typed) {
             const AngleValue entry = typed.angleValue();
             s.returnTimes[entry.angle] = entry.value;
         }},
        {"--opening", Takes::one, "A=SECONDS", fixedGroup,
         fmt::format("First shot and its length, {}", words(limits::shotSeconds)),
         [](S& s, const T& typed) {
             const AngleValue shot = typed.angleValue();
             s.opening = {true, shot.angle, shot.value};
         }},
        {"--closing", Takes::one, "A=SECONDS", fixedGroup,
         fmt::format("Last shot and its length, {}", words(limits::shotSeconds)),
         [](S& s, const T& typed) {
             const AngleValue shot = typed.angleValue();
             s.closing = {true, shot.angle, shot.value};
         }},
        {"--section", Takes::several, "A,START,END[,NAME]", fixedGroup,
         "Hold a camera between two timecodes of the project; repeatable",
         [](S& s, const T& typed) { s.sections.push_back(typed.section()); }},
    };
    return flags;
}

void addFlag(CLI::App& verb, const Flag& flag, std::vector<std::string>& typed) {
    const auto keep = [&typed](const std::string& text) { typed = {text}; };
    CLI::Option* option = nullptr;
    switch (flag.takes) {
    case Flag::Takes::nothing:
        option = verb.add_flag_callback(
            flag.name, [keep] { keep(""); }, flag.help);
        break;
    case Flag::Takes::one:
        option =
            verb.add_option_function<std::string>(flag.name, keep, flag.help)->type_name(flag.form);
        break;
    case Flag::Takes::several:
        option = addTexts(verb, flag.name, typed, flag.help, flag.form);
        break;
    }
    option->group(flag.group);
}

} // namespace

void addSettingsFlags(CLI::App& verb, SettingsFlags& flags) {
    flags.typed.resize(settingsFlags().size());
    for (std::size_t i = 0; i < flags.typed.size(); ++i)
        addFlag(verb, settingsFlags()[i], flags.typed[i]);
}

void addAngleFlags(CLI::App& verb, SettingsFlags& flags) {
    flags.typed.resize(settingsFlags().size());
    for (std::size_t i = 0; i < flags.typed.size(); ++i) {
        const std::string_view name = settingsFlags()[i].name;
        if (name == "--main-camera" || name == "--audio")
            addFlag(verb, settingsFlags()[i], flags.typed[i]);
    }
}

bool areGiven(const SettingsFlags& flags) {
    return std::any_of(flags.typed.begin(), flags.typed.end(),
                       [](const auto& typed) { return !typed.empty(); });
}

EditSettings withFlags(EditSettings settings, const SettingsFlags& flags, const Project& project,
                       FileCalls& files) {
    const AngleNames video(project.videoAngles);
    const AngleNames audio(project.audioAngles);
    for (std::size_t i = 0; i < flags.typed.size(); ++i) {
        const Flag& flag = settingsFlags()[i];
        for (const std::string& text : flags.typed[i])
            flag.apply(settings, FlagText(flag.name, text, project, video, audio, files));
    }
    return settings;
}

} // namespace shotweaver
