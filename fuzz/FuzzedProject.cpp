#include "fuzz/FuzzedProject.h"

#include "engine/TimeValues.h"

#include <fmt/format.h>

#include <limits>
#include <numeric>
#include <set>

namespace shotweaver::fuzz {

namespace {

constexpr std::int64_t maximumFrames = 999'999'999;
constexpr int maximumDepth = 5;

const std::vector<std::string> oddTimes{
    "0s", "-0/1s", "1/3s",    "0.5s",   "1e3s", "-1/25s",   "9223372036854775807s",
    "1s", "s",     "1/0s",    "1e400s", "",     "1//2s",    "-9223372036854775808/7s",
    "+5", "inf",   "1e-320s", "1e300s", "nans", "1e3/1e2s", "999999999/1s"};
const std::vector<std::string> containers{"clip", "sync-clip", "spine",
                                          "gap",  "title",     "live-drawing"};
const std::vector<std::string> clips{"asset-clip", "video", "audio"};
const std::vector<std::string> sourceModes{"all", "video", "audio", "none"};

std::string leaf(const std::string& name, const std::string& attributes) {
    return fmt::format("<{} {}/>", name, attributes);
}

} // namespace

std::string FuzzedProject::pick(const std::vector<std::string>& texts) {
    return texts[bytes_.ConsumeIntegralInRange<std::size_t>(0, texts.size() - 1)];
}

std::string FuzzedProject::frameDuration() {
    if (sometimes()) {
        const std::int64_t numerator = number(1, rarely() ? 1'000'001 : 2000);
        return fmt::format("{}/{}s", numerator, number(1, 1'000'000));
    }
    return pick({"1/25s", "1001/30000s", "1001/24000s", "1001/60000s", "100/2997s", "1/1000000s",
                 "7/3s", "3s", "999999/1000000s", "1000000/1s"});
}

/// The same time in one of the ways to write it.
std::string FuzzedProject::time(std::int64_t frames) {
    if (rarely()) return pick(oddTimes);
    const RationalTime frame = parseRationalTime(project_.frameDuration);
    std::int64_t numerator = frames * frame.numerator;
    std::int64_t denominator = frame.denominator;
    if (sometimes()) {
        const std::int64_t common = std::gcd(numerator, denominator);
        numerator /= common;
        denominator /= common;
    }
    return denominator == 1 ? fmt::format("{}s", numerator)
                            : fmt::format("{}/{}s", numerator, denominator);
}

std::string FuzzedProject::clipTimes(std::int64_t around) {
    std::string times;
    if (!rarely()) times += fmt::format(R"(offset="{}" )", time(around + number(0, 400)));
    if (sometimes()) times += fmt::format(R"(start="{}" )", time(number(-100, 100'000)));
    if (!rarely()) times += fmt::format(R"(duration="{}" )", time(number(1, project_.length)));
    if (rarely()) times += R"(enabled="0" )";
    if (rarely()) times += fmt::format(R"(srcEnable="{}" )", pick(sourceModes));
    if (rarely()) times += R"(audioStart="0s" )";
    return times;
}

std::string FuzzedProject::angleItem(std::int64_t around, int depth) {
    const std::int64_t kind = number(0, depth < maximumDepth ? 9 : 4);
    if (kind <= 4) {
        const std::string asset = rarely() ? "missing" : pick({"asset-A", "asset-B"});
        return leaf(pick(clips), fmt::format(R"(ref="{}" name="c" {})", asset, clipTimes(around)));
    }
    if (kind <= 6)
        return leaf("ref-clip", fmt::format(R"(ref="{}" {})", pick({"k1", "k2", "k3", "none"}),
                                            clipTimes(around)));
    const std::string name = rarely() ? "audition" : pick(containers);
    std::string item = fmt::format("<{} {}>", name, clipTimes(around));
    if (rarely()) item += R"(<conform-rate scaleEnabled="0"/>)";
    if (rarely()) item += "<timeMap/>";
    for (std::int64_t i = number(0, 3); i > 0; --i)
        item += angleItem(number(0, 100), depth + 1);
    return item + "</" + name + ">";
}

std::string FuzzedProject::angle(const std::string& id) {
    std::string xml = fmt::format(R"(<mc-angle angleID="{}" name="{}">)", id, pick({id, "", "é"}));
    const std::int64_t base = project_.sourceStart - multicamStart_;
    if (sometimes())
        xml += leaf("asset-clip", fmt::format(R"(ref="asset-B" offset="{}" duration="{}")",
                                              project_.time(base), project_.time(project_.length)));
    for (std::int64_t i = number(0, 5); i > 0; --i)
        xml += angleItem(base + number(-200, project_.length), 0);
    return xml + "</mc-angle>";
}

std::string FuzzedProject::media() {
    std::string xml;
    for (const char* id : {"k1", "k2", "k3"}) {
        if (rarely()) continue;
        std::string content;
        for (std::int64_t i = number(0, 2); i > 0; --i)
            content += angleItem(number(0, 50), 3);
        xml += test::compoundMedia(id, content);
    }
    return xml;
}

std::string FuzzedProject::volume() {
    const std::string fade = pick({"fadeIn", "fadeOut"});
    return fmt::format(R"(<adjust-volume amount="-3dB"><param><{} duration="{}"/></param>)"
                       R"(</adjust-volume>)",
                       fade, time(number(0, 60)));
}

std::string FuzzedProject::source(const std::string& id) {
    std::string xml = fmt::format(R"(<mc-source angleID="{}" srcEnable="{}">)", id,
                                  id == "A" && !rarely() ? "all" : pick(sourceModes));
    if (sometimes()) xml += "<audio-role-source role='d'>" + volume() + "</audio-role-source>";
    if (sometimes()) xml += R"(<filter-video-mask><mask-shape tracking="s1"/></filter-video-mask>)";
    for (std::int64_t i = number(0, 2); i > 0; --i)
        xml += fmt::format(R"(<object-tracker><tracking-shape id="s{}"/></object-tracker>)", i);
    return xml + "</mc-source>";
}

std::string FuzzedProject::annotation(int index) {
    const std::string kind = pick(
        {"marker", "chapter-marker", "keyword", "rating", "analysis-marker", "hidden-clip-marker"});
    std::string times;
    if (!rarely())
        times += fmt::format(
            R"( start="{}")",
            time(project_.sourceStart + number(-20, sometimes() ? 20 : project_.length + 20)));
    if (!rarely())
        times += fmt::format(R"( duration="{}")", time(number(0, sometimes() ? 5000 : 40)));
    if (rarely()) times += R"( completed="0")";
    const std::string name = rarely() ? pick({"A", " b", "x1"}) : fmt::format("v{}", index);
    return leaf(kind, fmt::format(R"(value="{}"{})", name, times));
}

std::string FuzzedProject::connectedItem(int index) {
    const std::string kind = pick({"title", "asset-clip", "caption", "spine", "sync-clip", "clip",
                                   "ref-clip", "video", "audio", "live-drawing", "audition"});
    const std::int64_t offset = project_.sourceStart + number(-20, project_.length + 20);
    return fmt::format(R"(<{0} name="n{1}" lane="1" offset="{2}"><text> <text-style ref="t">a)"
                       R"(</text-style> </text><marker start="0s"/></{0}>)",
                       kind, index, time(offset));
}

std::string FuzzedProject::clipContent() {
    std::string xml;
    if (sometimes()) xml += "<note>a &amp;\n &lt;b&#13;</note>";
    if (sometimes()) xml += volume();
    xml += source("A");
    for (std::int64_t i = number(0, 2); i > 0; --i)
        xml += source(pick({"A", "B", "x1", "unknown"}));
    for (auto i = static_cast<int>(number(0, 12)); i > 0; --i)
        xml += sometimes() ? connectedItem(i) : annotation(i);
    if (sometimes())
        xml += R"(<filter-audio ref="f"/><metadata><md key="k" value="v"/></metadata>)";
    return xml;
}

std::string FuzzedProject::document() {
    project_.frameDuration = frameDuration();
    project_.length = number(1, sometimes() ? 2000 : 200);
    const std::int64_t farthest = rarely() ? maximumFrames + 1 : 4'000'000;
    project_.timelineStart = number(0, farthest);
    project_.sourceStart = sometimes() ? number(-farthest, farthest) : number(0, 1000);
    multicamStart_ = sometimes() ? number(-farthest, farthest) : 0;
    project_.multicamAttributes = fmt::format(R"(tcStart="{}")", project_.time(multicamStart_));
    if (sometimes()) project_.sequenceAttributes = pick({R"(tcFormat="DF")", R"(tcFormat="NDF")"});
    if (rarely()) project_.clipAttributes += pick({R"( enabled="0")", R"( srcEnable="video")"});
    if (rarely()) project_.rootAttributes = "";

    const std::int64_t base = project_.sourceStart - multicamStart_;
    const std::int64_t late = sometimes() ? number(0, 50) : 0;
    project_.angles = {{"A", "A", {{base, project_.length}}},
                       {"B", "B", {{base + late, number(1, project_.length)}}}};
    project_.angles[0].hasAudio = !rarely();
    angles_ = {"A", "B"};
    project_.extraResources = media();
    for (auto i = number(0, 3); i > 0; --i) {
        angles_.push_back(rarely() ? "A" : fmt::format("x{}", i));
        project_.extraAngles += angle(angles_.back());
    }
    project_.clipContent = clipContent();
    return project_.xml();
}

double FuzzedProject::setting(double lowest, double highest) {
    if (!rarely()) return bytes_.ConsumeFloatingPointInRange(lowest, highest);
    return bytes_.PickValueInArray({lowest, highest, lowest - 0.001, highest + 0.001,
                                    std::numeric_limits<double>::quiet_NaN(),
                                    std::numeric_limits<double>::infinity()});
}

std::string FuzzedProject::camera() {
    return rarely() ? "unknown" : pick(angles_);
}

GenerationInputs FuzzedProject::inputs(const CoverageMap& coverage) {
    GenerationInputs inputs;
    inputs.mainCamera = sometimes() ? camera() : "A";
    for (const auto& [angle, footage] : coverage) {
        const bool isUsable = angle != inputs.mainCamera && !footage.empty();
        if (isUsable != rarely()) inputs.otherCameras.push_back(angle);
    }
    if (rarely()) inputs.otherCameras.push_back(camera());
    inputs.mainShare = setting(0.1, 0.9);
    inputs.averageShot = setting(4, 20);
    inputs.doubleMain = bytes_.ConsumeBool();
    inputs.varyOthers = bytes_.ConsumeBool();
    if (sometimes()) inputs.mainRange = SecondsRange{setting(1, 20), setting(20, 120)};
    if (sometimes()) inputs.otherRange = SecondsRange{setting(1, 20), setting(20, 120)};
    if (sometimes()) inputs.opening = BookendShot{camera(), setting(1, sometimes() ? 120 : 4)};
    if (sometimes()) inputs.closing = BookendShot{camera(), setting(1, sometimes() ? 120 : 4)};
    for (auto i = number(0, 3); i > 0; --i)
        inputs.frequencies[camera()] = setting(1, 10);
    for (auto i = number(0, 3); i > 0; --i)
        inputs.returnTimes[camera()] = setting(0, sometimes() ? 600 : 10);
    for (auto i = number(0, 3); i > 0; --i) {
        const std::int64_t start = number(0, project_.length);
        inputs.sections.push_back({camera(), start, start + number(-1, 60)});
        if (rarely()) inputs.sections.back().start = number(INT64_MIN, INT64_MAX);
        if (rarely()) inputs.sections.back().end = number(INT64_MIN, INT64_MAX);
    }
    std::set<std::int64_t> frames;
    for (auto i = sometimes() ? number(0, 20) : 0; i > 0; --i)
        frames.insert(number(1, project_.length));
    inputs.cutPoints.assign(frames.begin(), frames.end());
    for (std::int64_t at = 0; sometimes() && at < project_.length; at += number(0, 200))
        inputs.notes.push_back({at, camera(), "note"});
    if (!sometimes()) return inputs;
    for (auto i = number(0, 2); i > 0; --i) {
        inputs.kept.push_back({UUID{}, camera(), number(0, project_.length), number(0, 60)});
        inputs.kept.back().id.bytes[0] = static_cast<std::uint8_t>(i);
        if (rarely()) inputs.kept.back().start = number(INT64_MIN, INT64_MAX);
        if (rarely()) inputs.kept.back().duration = number(INT64_MIN, INT64_MAX);
    }
    return inputs;
}

} // namespace shotweaver::fuzz
