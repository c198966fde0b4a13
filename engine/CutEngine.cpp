#include "engine/CutEngine.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"
#include "engine/import/AngleMediaWalker.h"
#include "engine/import/XmlAccess.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace shotweaver {

namespace {

constexpr std::int64_t maximumFrameTerm = 1'000'000;

// A span covers a frame when it covers all of it but this part, in frames.
constexpr double frameTolerance = 0.000001;
constexpr double maximumFrame = 1'000'000'000;

[[noreturn]] void refuse(const char* sentence) {
    throw FinalCutImportError::invalid(sentence);
}

/// The attributes of a format that have to agree, with what an absent one means.
struct FormatAttribute {
    Name name;
    std::optional<std::string_view> absent;
};

constexpr std::array<FormatAttribute, 8> formatAttributes{{{"width", {}},
                                                           {"height", {}},
                                                           {"fieldOrder", "progressive"},
                                                           {"paspH", "1"},
                                                           {"paspV", "1"},
                                                           {"colorSpace", {}},
                                                           {"projection", {}},
                                                           {"stereoscopic", {}}}};

std::optional<std::string_view> formatValue(XmlNode format, const FormatAttribute& description) {
    const auto value = attribute(format, description.name);
    if (!value) return description.absent;
    // A colour space is a code, perhaps followed by its name: "1-1-1 (Rec. 709)".
    if (description.name == Name("colorSpace")) return value->substr(0, value->find(" ("));
    return value;
}

bool frameDurationsMatch(XmlNode a, XmlNode b) {
    const RationalTime first = parseRationalTime(attributeOr(a, "frameDuration", "0s"));
    const RationalTime second = parseRationalTime(attributeOr(b, "frameDuration", "0s"));
    std::int64_t left = 0;
    std::int64_t right = 0;
    return !__builtin_mul_overflow(first.numerator, second.denominator, &left) &&
           !__builtin_mul_overflow(second.numerator, first.denominator, &right) && left == right;
}

/// Turns an angle's spans into the frames that they cover wholly.
class SpanFrames {
  public:
    SpanFrames(const CutEngine& engine, std::int64_t multicamStart)
        : length_(engine.length),
          clipStart_(engine.frameDuration.seconds(engine.sourceStart - multicamStart)),
          framesPerSecond_(static_cast<double>(engine.frameDuration.denominator) /
                           static_cast<double>(engine.frameDuration.numerator)) {}

    /// Empty when it covers none; nothing for times that are not finite or too large.
    std::optional<FrameRange> frames(const AngleMediaWalker::Span& span) const {
        const double start = frame(span.start);
        const double end = frame(span.end);
        if (!(std::abs(start) < maximumFrame && std::abs(end) < maximumFrame)) return std::nullopt;
        const auto first = static_cast<std::int64_t>(std::ceil(start - frameTolerance));
        const auto last = static_cast<std::int64_t>(std::floor(end + frameTolerance));
        return FrameRange{std::max<std::int64_t>(first, 0), std::min(last, length_)};
    }

  private:
    /// Not finite for a time that is not.
    double frame(double angleSeconds) const {
        return framesPerSecond_ * (angleSeconds - clipStart_);
    }

    std::int64_t length_;
    double clipStart_;
    double framesPerSecond_;
};

} // namespace

bool formatsMatch(XmlNode projectFormat, XmlNode multicamFormat) {
    if (attribute(projectFormat, "id") == attribute(multicamFormat, "id")) return true;
    if (!frameDurationsMatch(projectFormat, multicamFormat)) return false;
    return std::all_of(
        formatAttributes.begin(), formatAttributes.end(), [&](const FormatAttribute& each) {
            return formatValue(projectFormat, each) == formatValue(multicamFormat, each);
        });
}

CutEngine::CutEngine(std::string_view bytes) : CutEngine(readProject(bytes)) {}

CutEngine::CutEngine(ProjectImport intake)
    : project(intake.project), sequence(intake.sequence), original(intake.multicamClip) {
    readTiming(intake);
    checkClip();
    findAudioSource();
    checkFormats(intake);
    readCoverage(intake);
    document = std::move(intake.document);
}

void CutEngine::readTiming(const ProjectImport& intake) {
    const RationalTime frame =
        parseRationalTime(attributeOr(intake.projectFormat, "frameDuration", ""));
    if (frame.numerator < 1 || frame.numerator > maximumFrameTerm ||
        frame.denominator > maximumFrameTerm)
        refuse("Unsupported frame rate.");
    frameDuration = {frame.numerator, frame.denominator};

    const auto frames = [&](XmlNode element, Name name) {
        return frameDuration.frames(attributeOr(element, name, "0s"));
    };
    dropFrame = attribute(sequence, "tcFormat") == "DF" ? DropFrame::yes : DropFrame::no;
    length = frames(original, "duration");
    sourceStart = frames(original, "start");
    timelineStart = frames(original, "offset");
    if (length < 1 || frames(sequence, "duration") != length ||
        frames(sequence, "tcStart") != timelineStart)
        refuse("Use one multicam clip filling the project timeline.");
}

void CutEngine::checkClip() const {
    const ClipAttributes clip(original);
    if (clip.isDisabled() || clip.hasSplitAudio() || firstElement(original, "timeMap") ||
        hasScaledConformRate(original))
        refuse(
            "Speed changes, split audio and disabled main multicam clips are not supported yet.");
}

void CutEngine::findAudioSource() {
    std::vector<XmlNode> heard;
    for (const XmlNode source : Elements(original, "mc-source")) {
        const std::string_view enabled = attributeOr(source, "srcEnable", "all");
        if (enabled == "all" || enabled == "audio") heard.push_back(source);
    }
    if (heard.size() != 1) return;
    audioSource = heard.front();
    audioID = attributeOr(audioSource, "angleID", "");
}

void CutEngine::checkFormats(const ProjectImport& intake) const {
    const XmlNode format = intake.resources.format(attribute(intake.multicam, "format"));
    if (!format || !formatsMatch(intake.projectFormat, format))
        refuse("The multicam and project need matching frame rate, dimensions and colour format.");
}

void CutEngine::readCoverage(const ProjectImport& intake) {
    const std::int64_t multicamStart =
        frameDuration.frames(attributeOr(intake.multicam, "tcStart", "0s"));
    const SpanFrames spanFrames(*this, multicamStart);
    AngleMediaWalker walker(intake.resources);
    for (const XmlNode angle : Elements(intake.multicam, "mc-angle")) {
        const std::string id(attributeOr(angle, "angleID", ""));
        const std::string_view camera = attributeOr(angle, "name", id);
        CoverageBuilder picture;
        CoverageBuilder sound;
        bool hasValidTiming = true;
        const AngleMediaWalker::SpanSink sink = [&](const AngleMediaWalker::Span& span) {
            const auto range = spanFrames.frames(span);
            hasValidTiming &= range.has_value();
            if (range && span.video) picture.add(*range);
            if (range && span.audio) sound.add(*range);
        };
        for (const XmlNode child : Elements(angle))
            walker.walk(child, camera, sink);
        // After the walk, whose failures come first.
        if (!hasValidTiming) refuse("Invalid angle timing.");
        coverage[id] = picture.take();
        audioCoverage[id] = sound.take();
    }
}

const Coverage& CutEngine::coverageOf(std::string_view angle) const {
    static const Coverage none;
    const auto found = coverage.find(angle);
    return found == coverage.end() ? none : found->second;
}

std::vector<FrameRange> CutEngine::coveredParts(std::string_view angle, std::int64_t from,
                                                std::int64_t to) const {
    const Coverage& footage = coverageOf(angle);
    auto range = std::upper_bound(
        footage.begin(), footage.end(), from,
        [](std::int64_t frame, const FrameRange& each) { return frame < each.upperBound; });
    std::vector<FrameRange> parts;
    for (; range != footage.end() && range->lowerBound < to; ++range) {
        const FrameRange part{std::max(from, range->lowerBound), std::min(to, range->upperBound)};
        if (part.lowerBound < part.upperBound) parts.push_back(part);
    }
    return parts;
}

} // namespace shotweaver
