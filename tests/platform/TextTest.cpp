#include "platform/Text.h"

#include "platform/Dates.h"
#include "platform/Locale.h"
#include "platform/NumberText.h"
#include "platform/TextSearch.h"
#include "platform/Uuid.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <tuple>

namespace shotweaver {
namespace {

TEST(Text, trimsTheWhiteSpaceOfUnicode) {
    EXPECT_EQ(trimmed("\u3000\u00A0\u2028\xC2\x85 a b\t\r\n\v\f\u1680"), "a b");
    EXPECT_EQ(trimmed(" \u2003\n"), "");
    EXPECT_EQ(trimmed(" \xFF x \x85 "), "\xFF x \x85");     // bytes that are no characters
    for (const char* text : {"\u200Bx\uFEFF", "\x1Fx\x1F"}) // no white space to Unicode
        EXPECT_EQ(trimmed(text), text);
}

TEST(Text, canonicallyEquivalentTextsAreOneAndSortByScalarValue) {
    TextSet set;
    for (const char* text : {"😀", "e\u0301", "é", "\u212B", "Å", "\uFF21", "z", "Z", "ﬁ", "fi", "z",
                             "\u1E0B\u0323", "\u1E0D\u0307"})
        set.add(text);
    EXPECT_EQ(joined(set.sorted(), ", "), "Z, fi, z, \u212B, e\u0301, \u1E0B\u0323, ﬁ, \uFF21, 😀");
}

TEST(Text, firstCharactersAreThoseThatAReaderCounts) {
    for (const std::string character :
         {"👨‍👩‍👧‍👦", "👍🏽", "🇩🇪", "e\u0301\u0323\u0302",
          "\u1112\u1161\u11AB", "\r\n", "❤\uFE0F"}) {
        const std::string two = character + character;
        EXPECT_EQ(firstCharacters(two + character, 2), two);
        EXPECT_EQ(firstCharacters(two, 3), two);
    }
    EXPECT_EQ(displayWidth("e\u0301\u200D"), 1U); // in columns of a terminal
    EXPECT_EQ(displayWidth("aé日本Ａ👍"), 10U);
}

TEST(Text, marksInAnyNumberComeIntoTheirOrder) {
    const auto marks = [](const char* mark, int count) {
        std::string text;
        for (; count > 0; --count)
            text += mark;
        return text;
    };
    // A dot below belongs before an acute.
    for (const int count : {1, 300, 100'000})
        EXPECT_EQ(normalizedNFC("a" + marks("\u0301", count) + marks("\u0323", count) + "가"),
                  normalizedNFC("\u1EA1" + marks("\u0323", count - 1) + marks("\u0301", count) +
                                "\u1100\u1161"))
            << count;
}

TEST(Text, bytesThatAreNoCharactersDoNoHarm) {
    EXPECT_TRUE(isUTF8("é\uFFFD\U0010FFFF"));
    for (const char* text : {"\xC3", "a\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
        EXPECT_FALSE(isUTF8(text)) << text;
    EXPECT_TRUE(normalizedNFC("e\u0301\xFFz").starts_with("é"));
    EXPECT_EQ(lowercased("ÉCRAN I ΟΔΟΣ\xFF"), "écran i οδος\uFFFD"); // in no one's language
    EXPECT_EQ(firstCharacters("\xFF\xFF\xC3", 2), "\xFF\xFF");
    EXPECT_EQ(displayWidth("a\xFF\xE2\x82"), 3U);
}

TEST(TextSearch, findsTextsAsAReaderWould) {
    const std::tuple<const char*, const char*, const char*> found[] = {
        {"the audio angle", "AUDIO", "und"},
        {"Le CAFE\u0301.", "café.", "en-GB"},
        {"cafe", "e\u0301", "und"},
        {"Straße", "STRASSE", "de"},
        {"日本語", "本", "ja"},
        {"co\u00ADoperate", "coop", "und"},
        {"coop", "\u00ADo\u200Bo", "und"},
        {"", "", "und"},
        {"a", "", "und"},
        {"", "\u200B\u0301", "und"},
        {"a\xFFz", "Z", "no such locale!"}};
    for (const auto& [text, wanted, locale] : found)
        EXPECT_TRUE(TextSearch(wanted, locale).isIn(text)) << text << " / " << wanted;
    const std::tuple<const char*, const char*, const char*> missed[] = {
        {"", "a", "und"},       {"a b", "ab", "und"}, {"a.b", "a-b", "und"}, {"ab", "a b", "th"},
        {"audio", "od", "und"}, {"ton", "tön", "sv"}}; // a letter of its own there
    for (const auto& [text, wanted, locale] : missed)
        EXPECT_FALSE(TextSearch(wanted, locale).isIn(text)) << text << " / " << wanted;
}

TEST(TextSearch, saysWhereAHitStands) {
    const auto hits = [](const char* wanted, const char* text) {
        std::string places;
        for (const auto& [start, length] : TextSearch(wanted, "en").hitsIn(text))
            places += fmt::format("{}+{} ", start, length);
        return places;
    };
    EXPECT_EQ(hits("cafe", "A CAFÉ, a cafe\u0301."), "2+4 10+5 ");
    EXPECT_EQ(hits("é", "𝄞 e"), "3+1 "); // which takes two units before it
    EXPECT_EQ(hits("aa", "aaaaa"), "0+2 2+2 ");
    EXPECT_EQ(hits("", "text"), "");
    EXPECT_EQ(hits("x", "text and x"), "2+1 9+1 ");
}

TEST(NumberText, readsWholeTextsThatFit) {
    const std::pair<const char*, double> accepted[] = {
        {"+7", 7}, {"-2.5", -2.5}, {"1.5E-2", .015}, {"1e-400", 0}, {"9007199254740993", 0x1p53}};
    for (const auto& [text, value] : accepted)
        EXPECT_EQ(parseDecimal(text), value) << text;
    EXPECT_TRUE(std::signbit(*parseDecimal("-0")));
    for (const char* refused :
         {"", "-", "+-1", "1.", ".5", "e5", "1e+", " 1", "1 ", "1,5", "inf", "0x10", "1e400", "１"})
        EXPECT_EQ(parseDecimal(refused), std::nullopt) << refused;

    EXPECT_EQ(parseInteger("+9223372036854775807"), INT64_MAX);
    EXPECT_EQ(parseInteger("-9223372036854775808"), INT64_MIN);
    for (const char* refused : {"", "+", "+-1", "--1", "1.0", " 1", "9223372036854775808"})
        EXPECT_EQ(parseInteger(refused), std::nullopt) << refused;
    EXPECT_EQ(parseUnsigned("18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(parseUnsigned("18446744073709551616"), std::nullopt);
}

TEST(NumberText, isTheSameUnderEveryLocaleUnlessAsked) {
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(shortestDecimal(60), "60.0");
    EXPECT_EQ(shortestDecimal(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(fixedDecimal(2.675, 2), "2.67"); // the double is below the tie
    EXPECT_EQ(parseDecimal("1.5"), 1.5);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(DecimalFormat("de").text(1234.5678), "1.234,568");
    EXPECT_EQ(DecimalFormat("no such locale!").text(-1234.5678), "-1,234.568");
}

TEST(Dates, areWrittenInWholeSecondsOfUTC) {
    const std::pair<double, const char*> cases[] = {
        {763221900.75, "2025-03-09T14:05:00Z"},   {-0.25, "2000-12-31T23:59:59Z"},
        {-26524800, "2000-02-29T00:00:00Z"},      {-3182198401, "1900-02-28T23:59:59Z"},
        {252423993599.5, "9999-12-31T23:59:59Z"}, {252423993600, "9999-12-31T23:59:59Z"},
        {HUGE_VAL, "9999-12-31T23:59:59Z"},       {-63145526400, "0000-01-01T00:00:00Z"},
        {-1e300, "0000-01-01T00:00:00Z"},         {std::nan(""), "0000-01-01T00:00:00Z"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(iso8601(seconds), text) << seconds;
}

TEST(UUID, readsEitherCaseWritesUpperCaseAndMakesVersionFour) {
    const UUID uuid = UUID::parse("00112233-4455-6677-8899-aAbBcCdDeEfF").value();
    EXPECT_EQ(uuid.text(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(uuid.compactText(), "00112233445566778899AABBCCDDEEFF");
    for (const char* refused :
         {"00112233-4455-6677-8899-AABBCCDDEEF", "00112233-4455-6677-8899-AABBCCDDEEFF0",
          "00112233-4455-6677-8899-AABBCCDDEEFG", "0011223-34455-6677-8899-AABBCCDDEEFF"})
        EXPECT_EQ(UUID::parse(refused), std::nullopt) << refused;
    struct Ones final : RandomSource {
        std::uint64_t bits() override { return UINT64_MAX; }
    } ones;
    EXPECT_EQ(UUID::random(ones).text(), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
    EXPECT_NE(secureUUIDs()(), secureUUIDs()());
}

} // namespace
} // namespace shotweaver
