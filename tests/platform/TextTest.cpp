#include "platform/Text.h"

#include <gtest/gtest.h>

namespace shotweaver {
namespace {

using Texts = std::vector<std::string>;

std::string repeated(std::string_view text, int times) {
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

TEST(Text, trimsTheWhiteSpaceOfUnicode) {
    const struct {
        std::string_view text, trimmed;
    } cases[] = {
        {"\u3000\u00A0\u2028\xC2\x85 a b\t\r\n\v\f\u1680", "a b"},
        {" \u2003\n", ""},
        {"", ""},
        {"\u200Bx\uFEFF", "\u200Bx\uFEFF"}, // invisible, but no white space
        {" \xFF x \x85 ", "\xFF x \x85"},   // bytes that are no characters
        {" \xA0", "\xA0"},
        {"\x1Fx\x1F", "\x1Fx\x1F"}, // a separator of old, not white space
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(trimmed(text), expected) << text;
}

TEST(Text, canonicallyEquivalentTextsAreOneAndSortByScalarValue) {
    TextSet set;
    for (const char* text : {"😀", "e\u0301", "é", "\u212B", "Å", "Å", "\uFF21", "z", "Z", "ﬁ", "fi",
                             "z", "\u1E0B\u0323", "\u1E0D\u0307"})
        set.add(text);
    EXPECT_EQ(set.sorted(),
              (Texts{"Z", "fi", "z", "\u212B", "e\u0301", "\u1E0B\u0323", "ﬁ", "\uFF21", "😀"}));
    EXPECT_EQ(TextSet().sorted(), Texts{});
}

TEST(Text, firstCharactersAreThoseThatAReaderCounts) {
    const std::string_view whole[] = {
        "👨‍👩‍👧‍👦", "👍🏽", "🇩🇪",      "e\u0301\u0323\u0302",
        "\u1112\u1161\u11AB",        "\r\n",     "❤\uFE0F", "日"};
    for (const std::string_view character : whole)
        EXPECT_EQ(firstCharacters(repeated(character, 101), 100), repeated(character, 100))
            << character;

    EXPECT_EQ(firstCharacters("ab", 100), "ab");
    EXPECT_EQ(firstCharacters("", 100), "");
    EXPECT_EQ(firstCharacters("ab", 0), "");
}

TEST(Text, bytesThatAreNoCharactersDoNoHarm) {
    for (const char* text : {"", "é", "\uFFFD", "\U0010FFFF"})
        EXPECT_TRUE(isUTF8(text)) << text;
    for (const char* text :
         {"\xC3", "\x80", "a\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"})
        EXPECT_FALSE(isUTF8(text)) << text;

    EXPECT_TRUE(normalizedNFC("e\u0301\xFFz").starts_with("é"));
    EXPECT_EQ(lowercased("É\xFF"), "é\uFFFD");
    EXPECT_EQ(firstCharacters("\xFF\xFF\xC3", 2), "\xFF\xFF");
    EXPECT_EQ(displayWidth("a\xFF\xE2\x82"), 3U);
}

TEST(Text, lowerCaseIsThatOfNoParticularLanguage) {
    EXPECT_EQ(lowercased("ÉCRAN I"), "écran i");
    EXPECT_EQ(lowercased("ΟΔΟΣ"), "οδος"); // a sigma at the end of a word
}

TEST(Text, displayWidthCountsTerminalColumns) {
    const std::pair<const char*, std::size_t> cases[] = {
        {"", 0},        {"abc", 3}, {"日本", 4},     {"Ａ", 2},
        {"e\u0301", 1}, {"é", 1},   {"a\u200Db", 2}, {"👍", 2}};
    for (const auto& [text, width] : cases)
        EXPECT_EQ(displayWidth(text), width) << text;
}

TEST(Text, splitsAndJoins) {
    using Pieces = std::vector<std::string_view>;
    EXPECT_EQ(split(",a,,b,", ','), (Pieces{"", "a", "", "b", ""}));
    EXPECT_EQ(split("ab", ','), Pieces{"ab"});
    EXPECT_EQ(split("", ','), Pieces{""});
    EXPECT_EQ(joined({"a", "", "b"}, ", "), "a, , b");
    EXPECT_EQ(joined({"", "a"}, "-"), "-a");
    EXPECT_EQ(joined({}, ", "), "");
}

} // namespace
} // namespace shotweaver
