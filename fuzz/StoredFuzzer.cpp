// Any bytes as a stored session, presets, a revision, a manual, a cut list or times: what
// reads is written
// again and reads back as the same.

#include "engine/CutEngine.h"
#include "engine/export/ExportDocument.h"
#include "fuzz/Check.h"
#include "fuzz/ExportChecks.h"
#include "help/HelpContent.h"
#include "help/ShotweaverManual.h"
#include "persistence/EditPreset.h"
#include "persistence/RecordJson.h"
#include "persistence/SavedEditSession.h"
#include "planning/CutListCsv.h"
#include "planning/CutPoints.h"
#include "planning/CutReasons.h"
#include "planning/ProjectDefaults.h"
#include "platform/Base64.h"
#include "platform/NumberText.h"
#include "tests/support/ProjectBuilder.h"

#include <tuple>

namespace shotweaver::fuzz {

namespace {

/// What a stored text reads as; nothing when it is refused.
template <class Read>
auto readIf(Read read, std::string_view text) -> std::optional<decltype(read(text))> {
    std::optional<decltype(read(text))> value;
    refusalOf([&] { value = read(text); });
    return value;
}

std::string encoded(const SavedEditSession& session) {
    StringSink sink;
    SessionEncoder().write(sink, base64(session.sourceXML), session.settings, session.history,
                           session.keptShots);
    return sink.take();
}

/// A session that is accepted as a whole is one that the panel opens: each of its edits exports, or
/// says why it does not.
void checkAccepted(const SavedEditSession& session) {
    std::optional<CutEngine> engine;
    const auto refusal = refusalOf([&] {
        engine.emplace(session.sourceXML);
        validateSession(session, *engine);
    });
    if (refusal) return;
    SeededRandom random(1);
    const UUIDMaker makeUUID = [&random] { return UUID::random(random); };
    for (const EditRevision& revision : session.history.items) {
        std::string exported;
        const auto exportRefusal = refusalOf([&] {
            exported = exportDocument(*engine, revision.cuts, revision.settings.audio, makeUUID);
        });
        if (!exportRefusal) checkExport(*engine, revision.cuts, revision.settings.audio, exported);
    }
}

void checkSession(std::string_view bytes) {
    auto session = readIf(readSession, bytes);
    // A space in front keeps the reader off its short way. Before a byte order mark, which is no
    // beginning of that, nothing may stand.
    if (!bytes.starts_with("\xEF\xBB\xBF"))
        require(readIf(readSession, " " + std::string(bytes)) == session,
                "both ways to read a session agree");
    if (!session) return;
    checkAccepted(*session);
    session->version = 1; // what is written is always of this version
    const std::string text = encoded(*session);
    const auto again = readIf(readSession, text);
    require(again == session, "a session reads back", text);
    require(encoded(*again) == text, "a session is written the same again", text);
}

void checkPresets(std::string_view bytes) {
    const auto presets = readIf(loadPresets, bytes);
    if (!presets) return;
    const std::string text = encodePresets(*presets);
    require(readIf(loadPresets, text) == presets, "presets read back", text);
}

EditRevision revisionOf(std::string_view text) {
    const Json json = parseJson(text);
    return readRevision(JsonReader(json));
}

void checkRevision(std::string_view bytes) {
    const auto revision = readIf(revisionOf, bytes);
    if (!revision) return;
    const std::string text = revisionText(*revision);
    require(readIf(revisionOf, text) == revision, "a revision reads back", text);
}

/// A cut list as the engine sees it, without its identifiers.
std::vector<std::tuple<std::string, std::int64_t, std::int64_t, bool>>
placesOf(const CsvCutList& list) {
    std::vector<std::tuple<std::string, std::int64_t, std::int64_t, bool>> places;
    for (const Cut& cut : list.cuts)
        places.emplace_back(cut.angle, cut.start, cut.duration, list.kept.contains(cut.id));
    return places;
}

void checkCutList(std::string_view bytes) {
    static const Project project(test::ProjectBuilder{}.xml());
    SeededRandom random(1);
    const UUIDMaker makeUUID = [&random] { return UUID::random(random); };
    const auto read = [&](std::string_view text) {
        return readCutListCsv(text, project, makeUUID);
    };
    const auto list = readIf(read, bytes);
    if (!list) return;
    const EditSettings settings = importedSettings(project, {});
    const auto reasons = explainCuts(settings, project, list->cuts, list->kept);
    const std::string text = cutListCsv(list->cuts, project, list->kept, reasons);
    const auto again = readIf(read, text);
    require(again && placesOf(*again) == placesOf(*list), "a cut list reads back", text);
}

void checkCutTimes(std::string_view bytes) {
    static const Project project(test::ProjectBuilder{}.xml());
    const auto read = [&](std::string_view text) {
        MemorySource source(text);
        return readCutTimes(source, "times.txt", project);
    };
    const auto times = readIf(read, bytes);
    if (!times) return;
    std::string text;
    for (const double seconds : *times)
        text += shortestDecimal(seconds) + "\n";
    require(readIf(read, text) == times, "times read back", text);
    EditSettings settings = importedSettings(project, {});
    settings.cutTimes = *times;
    const auto points = cutPoints(settings, project);
    require(points.size() <= times->size(), "each time gives one cut point at most");
}

void checkManual(std::string_view bytes) {
    const auto manual = readIf(readManual, bytes);
    if (!manual) return;
    HelpContent content(*manual, "en");
    content.setQuery(manual->title);
    const std::vector<const ShotweaverManual::Section*> found = content.sections();
    require(found.size() <= manual->sections.size() &&
                (content.shownSection() == nullptr) == found.empty(),
            "a search shows a topic when it finds some");
    content.showAll();
    require(content.sections().size() == manual->sections.size(), "all topics can be shown");
}

} // namespace

} // namespace shotweaver::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = shotweaver::fuzz::textOf(data, size);
    shotweaver::fuzz::checkSession(bytes);
    shotweaver::fuzz::checkPresets(bytes);
    shotweaver::fuzz::checkRevision(bytes);
    shotweaver::fuzz::checkManual(bytes);
    shotweaver::fuzz::checkCutList(bytes);
    shotweaver::fuzz::checkCutTimes(bytes);
    return 0;
}
