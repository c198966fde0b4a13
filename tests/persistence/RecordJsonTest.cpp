#include "persistence/RecordJson.h"

#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

constexpr const char* sectionID = "5EC71010-0000-4000-8000-00000000000A";

EditRevision revision() {
    EditSettings settings;
    settings.mainShare = 62.5;
    settings.averageShot = 0.1;
    settings.mainMinimum = 1;
    settings.mainMaximum = 120;
    settings.otherMinimum = 2.25;
    settings.otherMaximum = 1e-7;
    settings.mainCamera = "+A/=";
    settings.otherCameras = {"B", "Ç\"\n"};
    settings.frequencies = {{"+A/=", 5}, {"Ç\"\n", 9.5}};
    settings.returnTimes = {{"B", 600}};
    settings.audio = "B";
    settings.doubleMain = true;
    settings.openingEnabled = true;
    settings.openingCamera = "+A/=";
    settings.openingSeconds = 16;
    settings.closingEnabled = true;
    settings.closingCamera = "B";
    settings.closingSeconds = 17;
    settings.sections = {
        {*UUID::parse(sectionID), "", "B", "01:00:00;00", "as typed"},
        {*UUID::parse("5EC71010-0000-4000-8000-00000000000B"), "Prayer", "", "", ""}};
    return {*UUID::parse("ED170000-1111-4222-8333-444455556666"),
            763221900.75,
            settings,
            {{*UUID::parse("C0700000-0000-4000-8000-000000000001"), "B", 0, INT64_MAX},
             {*UUID::parse("C0700000-0000-4000-8000-000000000002"), "+A/=", INT64_MIN, -1}}};
}

constexpr const char* stored =
    R"({"id":"ED170000-1111-4222-8333-444455556666","created":763221900.75,"settings":{)"
    R"("mainShare":62.5,"averageShot":0.1,"mainMinimum":1.0,"mainMaximum":120.0,)"
    R"("otherMinimum":2.25,"otherMaximum":1e-07,"mainCamera":"+A/=",)"
    R"("otherCameras":["B","Ç\"\n"],"frequencies":{"+A/=":5.0,"Ç\"\n":9.5},)"
    R"("returnTimes":{"B":600.0},"audio":"B","doubleMain":true,"openingEnabled":true,)"
    R"("openingCamera":"+A/=","openingSeconds":16.0,"closingEnabled":true,)"
    R"("closingCamera":"B","closingSeconds":17.0,"sections":[)"
    R"({"id":"5EC71010-0000-4000-8000-00000000000A","name":"","camera":"B",)"
    R"("start":"01:00:00;00","end":"as typed"},)"
    R"({"id":"5EC71010-0000-4000-8000-00000000000B","name":"Prayer","camera":"","start":"",)"
    R"("end":""}]},"cuts":[)"
    R"({"id":"C0700000-0000-4000-8000-000000000001","angle":"B","start":0,)"
    R"("duration":9223372036854775807},)"
    R"({"id":"C0700000-0000-4000-8000-000000000002","angle":"+A/=",)"
    R"("start":-9223372036854775808,"duration":-1}]})";

EditRevision read(const std::string& text) {
    const Json json = parseJson(text);
    return readRevision(JsonReader(json));
}

TEST(RecordJson, everyFieldGoesOutAndComesBack) {
    EXPECT_EQ(revisionJson(revision()).dump(), stored);
    EXPECT_EQ(read(stored), revision());
    EXPECT_EQ(readSettings(JsonReader(parseJson(settingsJson({}).dump()))), EditSettings());

    // Unknown keys are nobody's business, whatever they hold; numbers may be whole.
    const std::string grown = replaced(replaced(stored, "120.0", "120"), R"("audio":"B")",
                                       R"("comment":{"audio":[null]},"audio":"B")");
    EXPECT_EQ(read(grown), revision());
}

TEST(RecordJson, everyKeyIsRequiredAndNamedWithItsPlace) {
    const struct {
        std::string object; // path of the object, as sentences write it
        std::vector<const char*> keys;
    } records[] = {
        {"", {"id", "created", "settings", "cuts"}},
        {"settings.",
         {"mainShare", "averageShot", "mainMinimum", "mainMaximum", "otherMinimum", "otherMaximum",
          "mainCamera", "otherCameras", "frequencies", "returnTimes", "audio", "doubleMain",
          "openingEnabled", "openingCamera", "openingSeconds", "closingEnabled", "closingCamera",
          "closingSeconds", "sections"}},
        {"settings.sections[1].", {"id", "name", "camera", "start", "end"}},
        {"cuts[1].", {"id", "angle", "start", "duration"}},
    };
    for (const auto& record : records) {
        for (const char* key : record.keys) {
            Json json = parseJson(stored);
            Json& object = record.object.empty()          ? json
                           : record.object == "settings." ? json["settings"]
                           : record.object.front() == 'c' ? json["cuts"][1]
                                                          : json["settings"]["sections"][1];
            object[key] = nullptr;
            EXPECT_EQ(failureOf([&] {
                          readRevision(JsonReader(json));
                      }).find(fmt::format("The JSON's \"{}{}\" must be ", record.object, key)),
                      0U)
                << key;
            object.erase(key);
            EXPECT_EQ(failureOf([&] { readRevision(JsonReader(json)); }),
                      fmt::format("The JSON has no \"{}{}\".", record.object, key));
        }
    }
}

TEST(RecordJson, valuesOfAnotherTypeAreRefused) {
    const struct {
        const char* from;
        const char* to;
        const char* failure;
    } rows[] = {
        {R"("mainShare":62.5)", R"("mainShare":"62.5")",
         "The JSON's \"settings.mainShare\" must be a number."},
        {R"("doubleMain":true)", R"("doubleMain":1)",
         "The JSON's \"settings.doubleMain\" must be true or false."},
        {R"("audio":"B")", R"("audio":["B"])", "The JSON's \"settings.audio\" must be a string."},
        {R"(["B","Ç\"\n"])", R"("B")", "The JSON's \"settings.otherCameras\" must be an array."},
        {R"(["B","Ç\"\n"])", R"(["B",2])",
         "The JSON's \"settings.otherCameras[1]\" must be a string."},
        {R"({"B":600.0})", R"(["B",600])",
         "The JSON's \"settings.returnTimes\" must be an object."},
        {R"({"B":600.0})", R"({"B":"600"})",
         "The JSON's \"settings.returnTimes.B\" must be a number."},
        {R"("start":0,)", R"("start":0.0,)",
         "The JSON's \"cuts[0].start\" must be a whole number of at most 64 bits."},
        {R"(9223372036854775807)", R"(9223372036854775808)",
         "The JSON's \"cuts[0].duration\" must be a whole number of at most 64 bits."},
        {R"(-00000000000B")", R"(-00000000000")",
         "The JSON's \"settings.sections[1].id\" must be a UUID of 36 characters."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(failureOf([&] { read(replaced(stored, row.from, row.to)); }), row.failure);
    EXPECT_EQ(failureOf([] { read("[]"); }), "The JSON must be an object.");
}

TEST(RecordJson, givenSettingsReplaceWholeValues) {
    const auto over = [](const char* text) {
        return readSettingsOver(JsonReader(parseJson(text)), revision().settings);
    };
    EXPECT_EQ(over("{}"), revision().settings);
    EXPECT_EQ(over(R"({"unknown": [1]})"), revision().settings);

    EditSettings expected = revision().settings;
    expected.mainShare = 30;
    expected.otherCameras = {"Z"};
    expected.frequencies = {{"Z", 1}}; // the old entries are gone
    expected.returnTimes.clear();
    expected.sections = {{*UUID::parse(sectionID), "n", "c", "s", "e"}};
    EXPECT_EQ(over(R"({"sections": [{"id": "5EC71010-0000-4000-8000-00000000000A", "name": "n",
                                     "camera": "c", "start": "s", "end": "e"}],
                       "mainShare": 30, "otherCameras": ["Z", "Z"], "frequencies": {"Z": 1},
                       "returnTimes": {}})"),
              expected);

    const std::pair<const char*, const char*> refused[] = {
        {"[]", "The JSON must be an object."},
        {R"({"mainShare": true})", "The JSON's \"mainShare\" must be a number."},
        {R"({"mainShare": null})", "The JSON's \"mainShare\" must be a number."},
        {R"({"sections": [{}]})", "The JSON has no \"sections[0].id\"."}};
    for (const auto& [text, failure] : refused)
        EXPECT_EQ(failureOf([&, json = text] { over(json); }), failure);
}

} // namespace
} // namespace shotweaver::test
