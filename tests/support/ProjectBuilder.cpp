#include "tests/support/ProjectBuilder.h"

#include "engine/TimeValues.h"

#include <fmt/format.h>

#include <stdexcept>

namespace shotweaver::test {

namespace {

std::string angleXml(const AngleSpec& angle, const ProjectBuilder& project) {
    std::string xml = fmt::format(R"(<mc-angle name="{}" angleID="{}">)", angle.name, angle.id);
    for (const ClipSpec& clip : angle.clips)
        xml += fmt::format(
            R"(<asset-clip ref="asset-{}" offset="{}" name="{} clip" duration="{}"/>)", angle.id,
            project.time(clip.offset), angle.name, project.time(clip.duration));
    return xml + "</mc-angle>";
}

std::string assetXml(const AngleSpec& angle) {
    return fmt::format(R"(<asset id="asset-{0}" name="{0} recording" {1}{2}>)"
                       R"(<media-rep src="file:///{0}.mov"/></asset>)",
                       angle.id, angle.hasVideo ? R"(hasVideo="1" )" : "",
                       angle.hasAudio ? R"(hasAudio="1")" : "");
}

} // namespace

std::string ProjectBuilder::time(std::int64_t frames) const {
    const RationalTime frame = parseRationalTime(frameDuration);
    return FrameDuration{frame.numerator, frame.denominator}.time(frames);
}

std::string ProjectBuilder::xml() const {
    std::string assets;
    std::string angleElements;
    for (const AngleSpec& angle : angles) {
        assets += assetXml(angle);
        angleElements += angleXml(angle, *this);
    }
    return fmt::format(
        R"({head}<fcpxml {root}><resources><format id="r1" frameDuration="{frame}" {format}/>)"
        R"({assets}{extra}<media id="m1"><multicam format="r1" {multicam}>{angles}{extraAngles})"
        R"(</multicam></media></resources><library><event><project {project}>)"
        R"(<sequence format="r1" duration="{length}" tcStart="{start}" {sequence}><spine>)"
        R"(<mc-clip ref="m1" offset="{start}" start="{source}" duration="{length}" {clip}>{content})"
        R"(</mc-clip></spine></sequence></project></event></library></fcpxml>)",
        fmt::arg("head", head), fmt::arg("root", rootAttributes), fmt::arg("frame", frameDuration),
        fmt::arg("format", formatAttributes), fmt::arg("assets", assets),
        fmt::arg("extra", extraResources), fmt::arg("multicam", multicamAttributes),
        fmt::arg("angles", angleElements), fmt::arg("extraAngles", extraAngles),
        fmt::arg("project", projectAttributes), fmt::arg("length", time(length)),
        fmt::arg("start", time(timelineStart)), fmt::arg("sequence", sequenceAttributes),
        fmt::arg("source", time(sourceStart)), fmt::arg("clip", clipAttributes),
        fmt::arg("content", clipContent));
}

std::string compoundMedia(const std::string& id, const std::string& content) {
    return fmt::format("<media id='{}'><sequence><spine>{}</spine></sequence></media>", id,
                       content);
}

std::string repeated(int count, const std::string& text) {
    std::string result;
    for (; count > 0; --count)
        result += text;
    return result;
}

std::string mediaChain(int count, int uses, const std::string& end) {
    std::string media = compoundMedia(fmt::format("M{}", count), end);
    for (int i = 1; i < count; ++i) {
        const std::string use = fmt::format("<ref-clip ref='M{}'/>", i + 1);
        media += compoundMedia(fmt::format("M{}", i), repeated(uses, use));
    }
    return media;
}

std::string costlyMedia() {
    return compoundMedia("costly", "<video enabled='0' name='" + std::string(128'400, 'x') + "'/>");
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    if (at == std::string::npos) throw std::logic_error("nothing to replace: " + from);
    return text.replace(at, from.size(), to);
}

} // namespace shotweaver::test
