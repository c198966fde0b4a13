#include "persistence/RecordJson.h"
#include "persistence/SavedEditSession.h"
#include "platform/Base64.h"
#include "tests/persistence/Damage.h"
#include "tests/support/ProjectBuilder.h"

#include <cmath>

namespace shotweaver::test {
namespace {

const std::string unreadable =
    "The saved session could not be read. Its stored data has been kept.";

/// "A" and "B" cover the project, "C" has a hole in picture and sound, "S" is sound alone.
CutEngine engine() {
    ProjectBuilder project;
    project.angles.push_back({"C", "C", {{0, 400}, {600, 400}}});
    project.angles.push_back({"S", "S", {{0, 1000}}, false});
    return project.engine();
}

EditRevision revision(std::uint8_t number, const EditSettings& settings = {},
                      const std::vector<Cut>& cuts = {}) {
    EditRevision revision{UUID(), 763221900.75, settings, cuts};
    revision.id.bytes.back() = number;
    return revision;
}

/// What the table of damages replaces is found first where the table means it.
SavedEditSession session() {
    const auto settings = [](double mainShare, const char* main, const char* other,
                             const char* audio, const std::vector<SectionDraft>& sections = {}) {
        EditSettings made;
        made.mainShare = mainShare;
        made.mainCamera = main;
        made.otherCameras = {other};
        made.audio = audio;
        made.sections = sections;
        return made;
    };
    SavedEditSession session{
        1, "<fcpxml/>\xFF", settings(50, "A", "B", "S", {{UUID(), "\"", "C", "\\", "\t"}}), {}};
    session.history.append(
        revision(1, settings(51, "B", "A", "A"), {{UUID(), "A", 0, 500}, {UUID(), "B", 500, 500}}));
    session.history.append(
        revision(2, settings(52, "C", "A", "B"), {{UUID(), "C", 0, 400}, {UUID(), "A", 400, 600}}));
    return session;
}

std::string text(SessionEncoder& encoder, const SavedEditSession& session) {
    StringSink sink;
    encoder.write(sink, base64(session.sourceXML), session.settings, session.history,
                  session.keptShots);
    return sink.take();
}

std::string freshText(const SavedEditSession& session) {
    SessionEncoder encoder;
    return text(encoder, session);
}

TEST(SavedEditSession, keepsWhatIsKept) {
    SavedEditSession kept = session();
    kept.keptShots = {UUID(), revision(7).id};
    const std::string stored = freshText(kept);
    const std::string key = R"(,"keptCuts":["00000000-0000-0000-0000-000000000000",)"
                            R"("00000000-0000-0000-0000-000000000007"]})";
    EXPECT_EQ(stored, replaced(freshText(session()), "\"index\":1}}", "\"index\":1}" + key));
    EXPECT_EQ(readSession(stored), kept);
    EXPECT_EQ(readSession(replaced(stored, key, R"(,"keptCuts":null})")), session());
    const std::pair<const char*, const char*> rows[] = {
        {R"(,"keptCuts":{}})", "The JSON's \"keptCuts\" must be an array."},
        {R"(,"keptCuts":["0"]})", "The JSON's \"keptCuts[0]\" must be a UUID of 36 characters."}};
    for (const auto& [damaged, failure] : rows)
        EXPECT_EQ(failureOf([&, to = damaged] { readSession(replaced(stored, key, to)); }),
                  failure);
    EXPECT_EQ(loneRevisionText(revision(1), {}), revisionText(revision(1)));
    const Json lone = parseJson(loneRevisionText(revision(1), kept.keptShots));
    EXPECT_EQ(readRevision(JsonReader(lone)), revision(1));
    EXPECT_EQ(readKeptShots(JsonReader(lone)), kept.keptShots);
}

TEST(EditHistory, aNewRevisionReplacesWhatCameAfterTheCurrentOne) {
    EditHistory history;
    EXPECT_EQ(history.current(), nullptr);
    for (std::uint8_t number = 1; number <= 3; ++number)
        history.append(revision(number));
    EXPECT_EQ(history, (EditHistory{{revision(1), revision(2), revision(3)}, 2}));
    history.index = 0;
    history.append(revision(4));
    EXPECT_EQ(history, (EditHistory{{revision(1), revision(4)}, 1}));
    EXPECT_EQ(history.current(), history.revision(1));
    EXPECT_EQ(history.revision(2), nullptr);
}

TEST(SavedEditSession, theFirstFailedCheckSpeaks) {
    const std::string whole = "\" must be a whole number of at most 64 bits.";
    const std::string notBase64 = "The JSON's \"sourceXML\" must be base64 text.";
    const std::string noDuration = "The JSON has no \"history.items[1].cuts[1].duration\".";
    const std::string range =
        "The saved session contains invalid settings. Its stored data has been kept.";
    const std::string cameras = "The saved session's cameras do not match its XML snapshot.";
    const std::string audio =
        "This audio angle does not cover the whole project. Choose a continuous audio angle.";
    const std::string cuts = "The saved edit history contains invalid cuts.";
    const std::string incomplete = "The saved edit history has an incomplete timeline.";
    const auto rows = changes({
        {R"({"version":1,|{ "x" : [null], "version" :1 ,;8+/w==|8+\/w==;"index":1|"index":0)", ""},
        {R"("audio":"S"|"audio":"";"audio":"S"|"audio":"C";"returnTimes":{|"returnTimes":{"X":600)",
         ""},
        {R"("openingCamera":""|"openingCamera":"X")", ""},
        // The refused ones in the order of the checks.
        {R"("settings"|"version":1,"settings")",
         "The JSON has the key \"version\" twice in one object."},
        {R"("version":1|"version":"1")", "The JSON's \"version" + whole},
        {R"(8+/w==|8+/w=;8+/w==|8+/\nw==)", notBase64},
        {R"("duration":600|"x":0)", noDuration},
        {R"("index":1|"index":1.5)", "The JSON's \"history.index" + whole},
        {R"("version":1|"version":2;"index":1|"index":2;"index":1|"index":-1)", unreadable},
        {R"("openingSeconds":15.0|"openingSeconds":0)", range},
        {R"("mainCamera":"A"|"mainCamera":"S";"otherCameras":["B"]|"otherCameras":["B","X"])",
         cameras},
        {R"("audio":"S"|"audio":"X";"camera":"C"|"camera":"")", cameras},
        {R"("openingEnabled":false|"openingEnabled":true)", cameras},
        {R"("closingEnabled":false|"closingEnabled":true)", cameras},
        {R"("mainShare":51.0|"mainShare":9)", range},
        {R"("mainCamera":"B"|"mainCamera":"")", cameras},
        {R"("mainShare":52.0|"mainShare":91)", range},
        {R"("mainCamera":"C"|"mainCamera":"X")", cameras},
        {R"("audio":"A"|"audio":"C")", audio},
        {R"("cuts":[|"cuts":[],"x":[)", incomplete}, // puts any damage below out of sight
        {R"("start":0,"duration":500|"start":1,"duration":500)", cuts},
        {R"(0,"duration":500|0,"duration":501;0,"duration":500|0,"duration":499)", cuts},
        {R"(500,"duration":500|500,"duration":0;500,"duration":500|500,"duration":501)", cuts},
        {R"(500,"duration":500|500,"duration":9223372036854775807)", cuts},
        {R"("angle":"A"|"angle":"C";"angle":"B"|"angle":"S";"angle":"B"|"angle":"X")", cuts},
        {R"(500,"duration":500|500,"duration":499)", incomplete},
        {R"("audio":"B"|"audio":"")", audio},
        {R"("start":400|"start":401)", cuts},
        {R"("duration":600|"duration":599)", incomplete},
    });
    const CutEngine engine = test::engine();
    const std::string stored = freshText(session());
    const auto failure = [&](const std::string& text) {
        return failureOf([&] { validateSession(readSession(text), engine); });
    };
    for (auto first = rows.begin(); first != rows.end(); ++first) {
        const std::string once = replaced(stored, first->from, first->to);
        EXPECT_EQ(failure(once), first->failure) << first->to;
        for (auto second = first + 1; second != rows.end() && first->failure != ""; ++second) {
            if (once.find(second->from) == std::string::npos) continue;
            EXPECT_EQ(failure(replaced(once, second->from, second->to)), first->failure)
                << first->to << " and " << second->to;
        }
    }
    // The column counts what the document takes.
    EXPECT_NE(failure(replaced(stored, R"("settings")", "settings")).find("column 45:"),
              std::string::npos);
}

TEST(SavedEditSession, damageOfAnyByteIsReadOrRefused) {
    expectDamageIsReadOrRefused(freshText(session()), [engine = engine()](const auto& damaged) {
        validateSession(readSession(damaged), engine);
    });
}

} // namespace
} // namespace shotweaver::test
