#include "benchmarks/BenchmarkDocuments.h"

#include <fmt/format.h>

#include <iterator>

namespace shotweaver::benchmarks {

namespace {

/// An export around its resources and its multicam clip's content.
struct DocumentParts {
    std::string frameDuration = "1/25s";
    std::string assets;
    std::string angles;
    std::string duration;
    std::string clipContent;
};

std::string document(const DocumentParts& parts) {
    return fmt::format(R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE fcpxml>

<fcpxml version="1.11">
    <resources>
        <format id="r1" name="FFVideoFormat1080p" frameDuration="{0}" width="1920" height="1080"/>
        <effect id="r2" name="Basic Title" uid="Basic Title.moti"/>
{1}        <media id="r3" name="Benchmark">
            <multicam format="r1" tcStart="0s">
{2}            </multicam>
        </media>
    </resources>
    <library>
        <event name="Benchmark">
            <project name="Benchmark">
                <sequence format="r1" duration="{3}" tcStart="0s">
                    <spine>
                        <mc-clip ref="r3" offset="0s" name="Benchmark" duration="{3}">
                            <mc-source angleID="angle-0" srcEnable="all"/>
{4}                        </mc-clip>
                    </spine>
                </sequence>
            </project>
        </event>
    </library>
</fcpxml>
)",
                       parts.frameDuration, parts.assets, parts.angles, parts.duration,
                       parts.clipContent);
}

void addAsset(std::string& assets, std::size_t number, const char* tracks) {
    fmt::format_to(
        std::back_inserter(assets),
        R"(        <asset id="asset-{0}" name="Recording {0}" uid="{0:032X}" start="0s" {1}>
            <media-rep kind="original-media" src="file:///Volumes/Church/Recording%20{0}.mov"/>
            <metadata>
                <md key="com.apple.proapps.mio.cameraName" value="Camera {0}"/>
                <md key="com.apple.proapps.mio.ingestDate" value="2025-03-09 14:05:00 +0000"/>
            </metadata>
        </asset>
)",
        number, tracks);
}

constexpr const char* pictureAndSound =
    R"(duration="864000s" hasVideo="1" format="r1" hasAudio="1" audioRate="48000")";
constexpr const char* pictureOnly = R"(duration="40000000s" hasVideo="1" format="r1")";

} // namespace

std::string largeDocument(std::size_t clipsEach, std::size_t clipFrames) {
    constexpr std::size_t angleCount = 8;
    constexpr std::size_t assetCount = 800;

    DocumentParts parts;
    parts.frameDuration = "1001/30000s";
    parts.duration = fmt::format("{}/30000s", clipsEach * clipFrames * 1001);
    for (std::size_t asset = 0; asset < assetCount; ++asset)
        addAsset(parts.assets, asset, pictureAndSound);
    const auto out = std::back_inserter(parts.angles);
    for (std::size_t angle = 0; angle < angleCount; ++angle) {
        fmt::format_to(out,
                       R"(                <mc-angle name="Angle {0}" angleID="angle-{0}">)"
                       "\n",
                       angle);
        for (std::size_t clip = 0; clip < clipsEach; ++clip) {
            fmt::format_to(
                out,
                R"(                    <asset-clip ref="asset-{0}" offset="{1}/30000s" name="Recording {0}" start="{1}/30000s" duration="{2}/30000s" tcFormat="DF" audioRole="dialogue">
                        <keyword start="{1}/30000s" duration="{2}/30000s" value="Service, Camera"/>
                    </asset-clip>
)",
                (clip * angleCount + angle) % assetCount, clip * clipFrames * 1001,
                clipFrames * 1001);
        }
        parts.angles += "                </mc-angle>\n";
    }
    return document(parts);
}

std::string gappedDocument(std::size_t angles, std::size_t rangesEach, std::int64_t length) {
    DocumentParts parts;
    parts.duration = fmt::format("{}/25s", length);
    addAsset(parts.assets, 0, pictureOnly);
    addAsset(parts.assets, 1, R"(duration="40000000s" hasAudio="1")");
    const auto out = std::back_inserter(parts.angles);
    const auto spacing = length / static_cast<std::int64_t>(rangesEach);
    // The gap of each angle lies at a part of the spacing of its own.
    const auto gap = spacing / static_cast<std::int64_t>(2 * angles);
    for (std::size_t angle = 0; angle < angles; ++angle) {
        fmt::format_to(out, R"(<mc-angle name="Angle {0}" angleID="angle-{0}">)", angle);
        if (angle == 0)
            fmt::format_to(out, R"(<asset-clip ref="asset-1" offset="0s" duration="{}/25s"/>)",
                           length);
        const auto shift = 2 * static_cast<std::int64_t>(angle) * gap;
        for (std::int64_t start = shift - spacing + gap; start < length; start += spacing)
            fmt::format_to(out, R"(<asset-clip ref="asset-0" offset="{}/25s" duration="{}/25s"/>)",
                           start, spacing - gap);
        parts.angles += "</mc-angle>";
    }
    return document(parts);
}

std::string annotatedDocument(std::int64_t seconds, std::size_t annotations) {
    DocumentParts parts;
    parts.duration = fmt::format("{}s", seconds);
    addAsset(parts.assets, 0, pictureAndSound);
    for (const int angle : {0, 1})
        parts.angles += fmt::format(
            R"(<mc-angle name="Angle {0}" angleID="angle-{0}"><asset-clip ref="asset-0" offset="0s" duration="{1}s"/></mc-angle>)",
            angle, seconds);

    std::string titles;
    std::string markers;
    for (std::size_t i = 0; i < annotations; ++i) {
        const auto frame =
            static_cast<std::int64_t>(i) * seconds * 25 / static_cast<std::int64_t>(annotations);
        titles += fmt::format(
            R"(<title ref="r2" lane="1" offset="{}/25s" name="Title" duration="2s"><text><text-style ref="ts{}">Verse {}</text-style></text></title>)",
            frame, i, i);
        markers += fmt::format(R"(<marker start="{0}/25s" duration="1/25s" value="Verse"/>)"
                               R"(<keyword start="{0}/25s" duration="20s" value="Sermon"/>)",
                               frame);
    }
    parts.clipContent = titles + markers;
    return document(parts);
}

std::string tokenDocument(Token token, std::size_t bytes) {
    DocumentParts parts;
    parts.duration = "60s";
    addAsset(parts.assets, 0, pictureAndSound);
    const std::string text(bytes, 'x');
    if (token == Token::attribute)
        parts.assets += R"(<asset id="long" src="x"><metadata><md key="note" value=")" + text +
                        R"("/></metadata></asset>)";
    else if (token == Token::comment)
        parts.assets += "<!--" + text + "-->";
    else
        parts.assets += "<?note " + text + "?>";
    for (const int angle : {0, 1})
        parts.angles += fmt::format(
            R"(<mc-angle name="Angle {0}" angleID="angle-{0}"><asset-clip ref="asset-0" offset="0s" duration="60s"/></mc-angle>)",
            angle);
    return document(parts);
}

std::string compoundDocument(std::size_t clips, std::size_t uses) {
    DocumentParts parts;
    parts.duration = fmt::format("{}s", uses);
    addAsset(parts.assets, 0, pictureOnly);
    const auto assets = std::back_inserter(parts.assets);
    fmt::format_to(assets, R"(<media id="compound"><sequence format="r1" duration="{}s"><spine>)",
                   clips);
    for (std::size_t clip = 0; clip < clips; ++clip)
        fmt::format_to(assets, R"(<asset-clip ref="asset-0" offset="{}s" duration="1s"/>)", clip);
    parts.assets += "</spine></sequence></media>";
    const auto angles = std::back_inserter(parts.angles);
    fmt::format_to(angles, R"(<mc-angle name="Angle 0" angleID="angle-0">)");
    for (std::size_t use = 0; use < uses; ++use)
        fmt::format_to(angles, R"(<ref-clip ref="compound" offset="{}s" duration="1s"/>)", use);
    fmt::format_to(
        angles,
        R"(</mc-angle><mc-angle name="Angle 1" angleID="angle-1"><asset-clip ref="asset-0" offset="0s" duration="{}s"/></mc-angle>)",
        uses);
    return document(parts);
}

} // namespace shotweaver::benchmarks
