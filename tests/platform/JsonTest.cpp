#include "persistence/RecordJson.h"
#include "platform/Programs.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace shotweaver::test {
namespace {

TEST(JsonReader, whatIsNotOneStrictDocumentIsRefused) {
    const std::string tooDeep = "The JSON is nested more than 64 levels deep.";
    const std::string twice = "The JSON has the key \"a\" twice in one object.";
    const std::pair<std::string, std::string> rows[] = {
        {"\xEF\xBB\xBF \t\r\n{}\n", ""},
        {R"({"a": {"b": 1}, "b": [{"b": 1}], "A": 1e-999})", ""},
        {repeated(63, R"({"a":)") + "[]" + repeated(63, "}"), ""},

        {repeated(64, R"({"a":)") + "[]" + repeated(64, "}"), tooDeep},
        {R"({"a": 1, "b": 2, "\u0061": 1})", twice},
        {R"([{"a": {"x": 1}, "a": 2}])", twice},
        {"\n\n[1e999]", "The JSON could not be read at line 3: number overflow parsing '1e999'."},
        {"{}\n1", "The JSON could not be read: parse error at line 2, column 1: syntax error while "
                  "parsing value - unexpected number literal; expected end of input."},
    };
    for (const auto& [text, failure] : rows)
        EXPECT_EQ(failureOf([&, json = text] { parseJson(json); }), failure) << text.substr(0, 99);

    for (const char* text : {"\"\xFF\"", R"("\ud800")", "{'a': 1}", "[NaN]", "[01]", "// no\n1"})
        EXPECT_NE(failureOf([&] { parseJson(text); }), "") << text;
}

constexpr const char* twoByteMark = "\xd9\xab";

/// Makes a locale with a decimal mark of two bytes, and makes it the process's.
bool setTwoByteMark() {
    const TestFolder folder;
    const std::string numbers = folder.write(
        "numbers", std::string("LC_NUMERIC\ndecimal_point \"<U066B>\"\nthousands_sep \"\"\n") +
                       "grouping -1\nEND LC_NUMERIC\n");
    const std::string characters = folder.write(
        "characters", std::string("<code_set_name> UTF-8\n<escape_char> /\n<mb_cur_min> 1\n") +
                          "<mb_cur_max> 2\nCHARMAP\n<U066B> /xd9/xab mark\nEND CHARMAP\n");
    const auto localedef = findProgram("localedef", systemEnvironment());
    if (!localedef) return false;
    runProgram({*localedef, "-c", "-i", numbers, "-f", characters, folder.path("two-bytes")});
    setenv("LOCPATH", folder.path().c_str(), 1);
    return std::setlocale(LC_NUMERIC, "two-bytes") != nullptr &&
           std::localeconv()->decimal_point == std::string_view(twoByteMark);
}

TEST(JsonReader, numbersAreReadTheSameWayUnderEveryLocale) {
    if (!setTwoByteMark()) GTEST_SKIP() << "this system makes no such locale";
    EXPECT_EQ(parseJson("[12.5, 1e-7]"), Json({12.5, 1e-7}));
    EXPECT_STREQ(std::localeconv()->decimal_point, twoByteMark);
    std::setlocale(LC_NUMERIC, "C");
}

EditRevision revision() {
    const EditSettings settings{.mainShare = 62.5,
                                .averageShot = 0.1,
                                .mainMinimum = 1,
                                .mainMaximum = 120,
                                .otherMinimum = 2.25,
                                .otherMaximum = 1e-7,
                                .mainCamera = "+A/=",
                                .otherCameras = {"B"},
                                .frequencies = {{"+A/=", 5}, {"Ç\"\n", 9.5}},
                                .returnTimes = {},
                                .audio = "B",
                                .doubleMain = true,
                                .cutTimes = {},
                                .opening = {true, "+A/=", 16},
                                .closing = {false, "", 17},
                                .sections = {{UUID(), "Prayer", "B", "01:00:00;00", "as typed"}}};
    return {UUID(), 763221900.75, settings, {{UUID(), "B", INT64_MIN, INT64_MAX}}};
}

const std::string stored =
    R"({"id":"00000000-0000-0000-0000-000000000000","created":763221900.75,"settings":{)"
    R"("mainShare":62.5,"averageShot":0.1,"mainMinimum":1.0,"mainMaximum":120.0,)"
    R"("otherMinimum":2.25,"otherMaximum":1e-07,"mainCamera":"+A/=","otherCameras":["B"],)"
    R"("frequencies":{"+A/=":5.0,"Ç\"\n":9.5},"returnTimes":{},"audio":"B","doubleMain":true,)"
    R"("openingEnabled":true,"openingCamera":"+A/=","openingSeconds":16.0,)"
    R"("closingEnabled":false,"closingCamera":"","closingSeconds":17.0,"sections":[)"
    R"({"id":"00000000-0000-0000-0000-000000000000","name":"Prayer","camera":"B",)"
    R"("start":"01:00:00;00","end":"as typed"}]},"cuts":[)"
    R"({"id":"00000000-0000-0000-0000-000000000000","angle":"B",)"
    R"("start":-9223372036854775808,"duration":9223372036854775807}]})";

TEST(RecordJson, everyFieldGoesOutAndComesBackOrIsRefusedWithItsPlace) {
    EXPECT_EQ(revisionText(revision()), stored);
    const std::string place = "The JSON's \"settings.";
    const std::string whole = "\" must be a whole number of at most 64 bits.";
    const std::tuple<const char*, const char*, std::string> rows[] = {
        {R"("created":763221900.75,)", "", "The JSON has no \"created\"."},
        {R"("doubleMain":true,)", "", "The JSON has no \"settings.doubleMain\"."},
        {R"("angle":"B",)", "", "The JSON has no \"cuts[0].angle\"."},
        {"62.5", "null", place + "mainShare\" must be a number."},
        {R"(["B"])", R"(["B",2])", place + "otherCameras[1]\" must be a string."},
        {R"("returnTimes":{})", R"("returnTimes":[])", place + "returnTimes\" must be an object."},
        {"-9223372036854775808", "-9223372036854775809", "The JSON's \"cuts[0].start" + whole},
        {"9223372036854775807}", "9223372036854775808}", "The JSON's \"cuts[0].duration" + whole},
        {"00\",\"name", "0G\",\"name", place + "sections[0].id\" must be a UUID of 36 characters."},
    };
    const auto read = [](const char* from, const char* to) {
        const Json json = parseJson(replaced(stored, from, to));
        return readRevision(JsonReader(json));
    };
    EXPECT_EQ(read(R"(120.0,)", R"(120,"comment":{"audio":[null]},)"), revision());
    for (const auto& [from, to, failure] : rows)
        EXPECT_EQ(failureOf([&, a = from, b = to] { read(a, b); }), failure);
    EditRevision varied = revision();
    varied.settings.varyOthers = varied.settings.followMarkers = true;
    varied.settings.cutTimes = {4, -0.5, 4};
    EXPECT_EQ(readRevision(JsonReader(parseJson(revisionText(varied)))), varied);
    const char* const end = R"("doubleMain":true,)";
    EXPECT_EQ(read(end, R"("doubleMain":true,"varyOthers":true,"cutAtMarkers":false,)"
                        R"("followMarkers":true,"cutTimes":[4.0,-0.5,4.0],)"),
              varied);
    EXPECT_EQ(read(end, R"("doubleMain":true,"varyOthers":null,"cutTimes":[],)"), revision());
    EXPECT_EQ(failureOf([&] { read(end, R"("doubleMain":true,"cutTimes":["4"],)"); }),
              place + "cutTimes[0]\" must be a number.");
    EXPECT_EQ(failureOf([&] { read(end, R"("doubleMain":true,"varyOthers":1,)"); }),
              place + "varyOthers\" must be true or false.");
}

TEST(RecordJson, givenSettingsReplaceWholeValues) {
    const auto over = [](const char* text) {
        return readSettingsOver(JsonReader(parseJson(text)), revision().settings);
    };
    EditSettings expected = revision().settings;
    expected.frequencies = {{"Z", 1}}; // the old entries are gone
    expected.otherCameras.clear();
    EXPECT_EQ(over(R"({"x": [1], "frequencies": {"Z": 1}, "otherCameras": []})"), expected);
    EXPECT_EQ(failureOf([&] { over(R"({"audio": null})"); }),
              "The JSON's \"audio\" must be a string.");
}

} // namespace
} // namespace shotweaver::test
