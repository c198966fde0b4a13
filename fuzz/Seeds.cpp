// Writes what the fuzzers start from: a folder for each of them in the folder that is given.

#include "engine/generation/CutGeneration.h"
#include "engine/import/XmlAccess.h"
#include "persistence/EditPreset.h"
#include "persistence/RecordJson.h"
#include "persistence/SavedEditSession.h"
#include "platform/Base64.h"
#include "platform/XmlIntake.h"
#include "platform/XmlWriter.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace shotweaver::fuzz {

namespace {

namespace files = std::filesystem;
using test::ProjectBuilder;

std::string contentOf(const files::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The folder of one fuzzer.
class SeedFolder {
  public:
    SeedFolder(const files::path& corpus, const char* fuzzer) : folder_(corpus / fuzzer) {
        files::create_directories(folder_);
    }

    void add(const std::string& seed) {
        std::ofstream file(folder_ / fmt::format("seed-{:02}", count_++), std::ios::binary);
        file.exceptions(std::ios::badbit | std::ios::failbit);
        file << seed;
    }

  private:
    files::path folder_;
    int count_ = 0;
};

/// Leaves out what no rule looks at, and all but the beginning of what each angle holds.
class Shrinking final : public XmlCopyRule {
  public:
    explicit Shrinking(XmlNode root) {
        forEachDescendant(root, [&](XmlNode element) {
            const bool isDetail =
                element.name() == "adjust-colorConform" || isElement(element, "bookmark");
            if (isDetail) left_.insert(element);
            if (!isElement(element, "mc-angle")) return;
            forEachDescendant(element, [&](XmlNode each) {
                if (isElement(each, "keyword")) left_.insert(each);
            });
            std::size_t place = 0;
            for (const XmlNode clip : Elements(element, "asset-clip"))
                if (++place > 2) left_.insert(clip);
        });
    }

    bool leavesOut(XmlNode element) const override { return left_.contains(element); }

  private:
    std::set<XmlNode> left_;
};

/// The example without what no rule looks at: a mutation has to meet what matters.
std::string shrunkExample() {
    const auto document = parseXml(
        contentOf(SHOTWEAVER_SOURCE_DIR "/examples/Sunday Service.fcpxml"), fcpxmlVocabulary);
    StringSink sink;
    XmlWriter writer(sink);
    writer.node(document->documentElement(), Shrinking(document->documentElement()));
    writer.finish();
    return sink.take();
}

ProjectBuilder dropFrameProject() {
    ProjectBuilder project;
    project.frameDuration = "1001/30000s";
    project.sequenceAttributes = R"(tcFormat="DF")";
    project.timelineStart = 107892;
    project.clipContent =
        R"(<note>n</note><adjust-volume><param><fadeIn duration="1s"/></param></adjust-volume>)"
        R"(<mc-source angleID="A" srcEnable="audio"><audio-role-source role="d"/></mc-source>)"
        R"(<mc-source angleID="B" srcEnable="video"><tracking-shape id="s"/></mc-source>)"
        R"(<title offset="0s"><text><text-style ref="t"> a </text-style></text></title>)"
        R"(<marker start="1001/30000s" value="m"/><keyword start="0s" duration="1001/300s"/>)"
        R"(<filter-audio/><metadata><md key="k" value="v"/></metadata>)";
    return project;
}

ProjectBuilder nestedProject() {
    ProjectBuilder project;
    project.extraResources =
        test::mediaChain(3, 2, R"(<video ref="asset-B" offset="0s" duration="4s"/>)");
    project.extraAngles =
        R"(<mc-angle angleID="C"><gap offset="0s" duration="1s"/><sync-clip offset="1s" start="2s" )"
        R"(duration="3s"><asset-clip ref="asset-A" offset="2s" duration="5s"/></sync-clip>)"
        R"(<ref-clip ref="M1" offset="5s" duration="4s" srcEnable="video"/></mc-angle>)";
    return project;
}

void addImportSeeds(SeedFolder seeds) {
    seeds.add(ProjectBuilder{}.xml());
    seeds.add(dropFrameProject().xml());
    seeds.add(nestedProject().xml());
    seeds.add(shrunkExample());
    std::set<files::path> golden; // sorted, so that a seed keeps its name
    for (const auto& entry :
         files::directory_iterator(SHOTWEAVER_SOURCE_DIR "/tests/engine/export"))
        golden.insert(entry.path());
    for (const files::path& each : golden) {
        if (each.extension() == ".fcpxml" && each.stem().extension() != ".expected")
            seeds.add(contentOf(each));
    }
}

std::string randomBytes(RandomSource& random, std::size_t count) {
    std::string bytes;
    while (bytes.size() < count)
        bytes += static_cast<char>(random.bits() & 0xFFU);
    return bytes;
}

/// The fuzzer makes its projects out of bytes: these are as good as any others, and enough of them.
void addProjectSeeds(SeedFolder seeds) {
    SeededRandom random(1);
    for (std::size_t size = 64; size <= 2048; size += 64)
        seeds.add(randomBytes(random, size));
}

EditRevision exampleRevision(const CutEngine& engine) {
    SeededRandom random(1);
    const auto makeUUID = [&random] { return UUID::random(random); };
    EditRevision revision;
    revision.id = makeUUID();
    revision.created = 780'000'000.25;
    revision.settings.mainCamera = "A";
    revision.settings.otherCameras = {"B"};
    revision.settings.audio = "A";
    revision.settings.frequencies = {{"B", 7.5}};
    revision.settings.returnTimes = {{"A", 1}};
    revision.settings.sections = {{makeUUID(), "Psalm \\ 23", "B", "00:00:10:00", "00:00:20:00"}};
    GenerationInputs inputs;
    inputs.mainCamera = "A";
    inputs.otherCameras = {"B"};
    revision.cuts = generateCuts(engine, inputs, random, makeUUID);
    return revision;
}

std::vector<EditPreset> examplePresets() {
    EditPreset preset;
    preset.name = "Slow \\ \"\t";
    preset.mainShare = 70;
    preset.averageShot = 10;
    preset.mainAngleName = "Wide";
    preset.otherAngleNames = {"Band", "Pulpit"};
    preset.audioAngleName = "Recorder";
    preset.returnTimes = {{{"Band", 120}}};
    preset.frequencies = {{{"Pulpit", 2.5}}};
    preset.opening = {{"Wide", 15}};
    preset.mainMinimum = 1;
    preset.mainMaximum = 20;
    EditPreset plain = preset;
    plain.id.bytes.back() = 1;
    plain.name = "Plain é";
    plain.opening.reset();
    return {preset, plain};
}

void addStoredSeeds(SeedFolder seeds) {
    const std::string document = ProjectBuilder{}.xml();
    const CutEngine engine(document);
    const EditRevision revision = exampleRevision(engine);
    EditHistory history;
    history.append(revision);
    StringSink sink;
    SessionEncoder().write(sink, base64(document), revision.settings, history, {});
    const std::string session = sink.take();
    seeds.add(session);
    seeds.add(test::replaced(session, R"({"version":1)", R"({ "version" : 1)"));
    seeds.add(encodePresets(examplePresets()));
    seeds.add(revisionText(revision));
    seeds.add("Start,End,Camera,Kept\r\n00:00:00:00,00:00:10:00,\"A\",yes\r\n00:00:10:00,,B,\r\n");
    seeds.add(
        R"({"title":"Help","description":"d","sections":[{"id":"quick-start","title":"Start",)"
        R"("summary":"s","blocks":[{"kind":"heading","text":"t"},{"kind":"steps","items":["a",)"
        R"("\u00e9"]},{"kind":"links","links":[{"title":"Site","url":"https://a.example/%20"}]}]}]})");
}

/// A text at the front, and at the back the bytes from which the fuzzer takes its numbers.
void addTimeSeeds(SeedFolder seeds) {
    SeededRandom random(2);
    for (const char* text : {"0s", "1001/30000s", "3603600/30000s", "-1001/30000s", "1//2s", "/2s",
                             "1/-2s", "1.5e3/2.5E-1s", "9223372036854775807/1s", "1e400s",
                             "00:01:00;02", " 0:10:0;0 ", "9999:59:59:29"})
        seeds.add(text + randomBytes(random, 64));
}

} // namespace

void writeSeeds(const files::path& corpus) {
    addImportSeeds({corpus, "ImportFuzzer"});
    addProjectSeeds({corpus, "ProjectFuzzer"});
    addStoredSeeds({corpus, "StoredFuzzer"});
    addTimeSeeds({corpus, "TimeFuzzer"});
}

} // namespace shotweaver::fuzz

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("Usage: fuzz_seeds FOLDER\n", stderr);
        return 2;
    }
    try {
        shotweaver::fuzz::writeSeeds(arguments[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
