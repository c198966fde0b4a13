#include "persistence/JsonReader.h"

#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>

namespace shotweaver::test {
namespace {

std::string nested(int levels, const std::string& open, const std::string& close) {
    std::string text;
    for (int i = 0; i < levels; ++i)
        text += open;
    for (int i = 0; i < levels; ++i)
        text += close;
    return text;
}

TEST(JsonReader, whatIsNotOneStrictDocumentIsRefused) {
    const std::string tooDeep = "The JSON is nested more than 64 levels deep.";
    const struct {
        const char* label;
        std::string text;
        std::string failure;
    } rows[] = {
        {"white space and a byte order mark around it", "\xEF\xBB\xBF \t\r\n{}\n", ""},
        {"the same key in different objects", R"({"a": {"b": 1}, "b": {"b": 1}})", ""},
        {"keys that differ in case", R"({"a": 1, "A": 1})", ""},
        {"64 arrays", nested(64, "[", "]"), ""},
        {"64 objects", nested(63, R"({"a":)", "}").insert(63 * 5, "{}"), ""},
        {"too small for a double", "1e-999", ""},

        {"65 arrays", nested(65, "[", "]"), tooDeep},
        {"65 objects", nested(64, R"({"a":)", "}").insert(64 * 5, "{}"), tooDeep},
        {"a million arrays", std::string(1'000'000, '['), tooDeep},
        {"a key twice", R"({"a": 1, "b": 2, "a": 1})", "The JSON has the key \"a\" twice."},
        {"twice once unescaped", R"({"a": 1, "\u0061": 2})", "The JSON has the key \"a\" twice."},
        {"twice after an object", R"({"a": {"x": 1}, "a": 2})",
         "The JSON has the key \"a\" twice."},
        {"too large for a double", "[1e999]",
         "The JSON could not be read: number overflow parsing '1e999'."},
        {"nothing", "",
         "The JSON could not be read: parse error at line 1, column 1: syntax error while parsing "
         "value - unexpected end of input; expected '[', '{', or a literal."},
        {"text after it", "{}\n{}",
         "The JSON could not be read: parse error at line 2, column 1: syntax error while parsing "
         "value - unexpected '{'; expected end of input."},
        {"a comma too many", "[1,]",
         "The JSON could not be read: parse error at line 1, column 4: syntax error while parsing "
         "value - unexpected ']'; expected '[', '{', or a literal."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(failureOf([&] { parseJson(row.text); }), row.failure) << row.label;

    for (const char* text :
         {"\"\xFF\"", "\"\xC0\xAF\"", "\"\xED\xA0\x80\"", R"("\ud800")", "\"a\nb\"", "{'a': 1}",
          "{a: 1}", "[NaN]", "[Infinity]", "[01]", "[+1]", "[1.]", "[.5]", "// no\n1", "[1", "\""})
        EXPECT_EQ(failureOf([&] { parseJson(text); }).find("The JSON could not be read: parse "),
                  0U)
            << text;
}

TEST(JsonReader, valuesOfTheWrongKindAreRefusedWithTheirPlace) {
    const Json json = parseJson(R"({
        "number": 2.5, "whole": 7, "fraction": 7.0, "exponent": 7e0, "text": "7", "none": null,
        "flag": true, "largest": 9223372036854775807, "smallest": -9223372036854775808,
        "above": 9223372036854775808, "below": -9223372036854775809, "far": 1e300,
        "list": [{"id": "00112233-4455-6677-8899-AABBCCDDEEFF"}, {"id": "00112233"},
                 {"id": "00112233-4455-6677-8899-AABBCCDDEEFG"},
                 {"id": "00112233x4455-6677-8899-AABBCCDDEEFF"},
                 {"id": "{0112233-4455-6677-8899-AABBCCDDEEF}"}, 5]})");
    const JsonReader reader(json);

    EXPECT_EQ(reader.at("whole").number(), 7);
    EXPECT_EQ(reader.at("above").number(), 0x1p63);
    EXPECT_EQ(reader.at("largest").integer(), INT64_MAX);
    EXPECT_EQ(reader.at("smallest").integer(), INT64_MIN);
    const std::vector<JsonReader> list = reader.at("list").elements();
    EXPECT_EQ(list[0].at("id").uuid().text(), "00112233-4455-6677-8899-AABBCCDDEEFF");

    const auto at = [&](const char* key) { return reader.at(key); };
    for (const char* key : {"fraction", "exponent", "number", "text", "flag", "none", "above",
                            "below", "far", "list"})
        EXPECT_EQ(failureOf([&] { at(key).integer(); }),
                  fmt::format("The JSON's \"{}\" must be a whole number of at most 64 bits.", key));
    for (const char* key : {"text", "flag", "none", "list"})
        EXPECT_EQ(failureOf([&] { at(key).number(); }),
                  fmt::format("The JSON's \"{}\" must be a number.", key));
    for (const char* key : {"whole", "text", "none"})
        EXPECT_EQ(failureOf([&] { at(key).boolean(); }),
                  fmt::format("The JSON's \"{}\" must be true or false.", key));
    for (const char* key : {"whole", "flag", "none"})
        EXPECT_EQ(failureOf([&] { at(key).string(); }),
                  fmt::format("The JSON's \"{}\" must be a string.", key));
    for (const char* key : {"text", "none"}) {
        EXPECT_EQ(failureOf([&] { at(key).elements(); }),
                  fmt::format("The JSON's \"{}\" must be an array.", key));
        EXPECT_EQ(failureOf([&] { at(key).members(); }),
                  fmt::format("The JSON's \"{}\" must be an object.", key));
    }
    for (const std::size_t element : {1U, 2U, 3U, 4U})
        EXPECT_EQ(
            failureOf([&] { list[element].at("id").uuid(); }),
            fmt::format("The JSON's \"list[{}].id\" must be a UUID of 36 characters.", element));
    EXPECT_EQ(failureOf([&] { list[5].at("id"); }), "The JSON's \"list[5]\" must be an object.");
    EXPECT_EQ(failureOf([&] { list[0].at("name"); }), "The JSON has no \"list[0].name\".");
}

/// Processor time to read an array or an object of so many of `value`.
double ticksFor(int count, const char* value, bool isObject) {
    std::string text(1, isObject ? '{' : '[');
    for (int i = 0; i < count; ++i) {
        if (i > 0) text += ',';
        if (isObject) text += fmt::format("\"key {}\":", i);
        text += value;
    }
    text += isObject ? '}' : ']';
    const std::clock_t before = std::clock();
    EXPECT_EQ(parseJson(text).size(), static_cast<std::size_t>(count));
    return static_cast<double>(std::clock() - before);
}

/// The work grows with the text, whatever is in it: compared with an object of as many plain values
/// in the same run, so that the machine does not matter. Looking through everything before at each
/// end of an object costs twenty to seventy times as much.
TEST(JsonReader, manyMembersAndElementsAreReadInProportion) {
    for (const char* value : {"{}", "[]", R"({"a":1})"}) {
        EXPECT_LT(ticksFor(10'000, value, true), 15 * ticksFor(10'000, "0", true))
            << "object of " << value;
        EXPECT_LT(ticksFor(100'000, value, false), 15 * ticksFor(100'000, "0", true))
            << "array of " << value;
    }
}

} // namespace
} // namespace shotweaver::test
