#include "platform/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

namespace shotweaver {
namespace {

TEST(NumberText, readsDecimals) {
    const std::pair<const char*, double> accepted[] = {
        {"0", 0},         {"+7", 7},     {"-2.5", -2.5},     {"1e3", 1000},
        {"1.5E-2", .015}, {"1e-400", 0}, {"00012.50", 12.5}, {"-0", -0.0}};
    for (const auto& [text, value] : accepted)
        EXPECT_EQ(parseDecimal(text), value) << text;
    EXPECT_TRUE(std::signbit(*parseDecimal("-0")));

    for (const char* refused :
         {"",   "+",   "-",   "+-1", "1.",       ".5",   "e5",    "1e",     "1e+", " 1",
          "1 ", "1,5", "inf", "nan", "infinity", "0x10", "1e400", "-1e400", "1f",  "１"})
        EXPECT_EQ(parseDecimal(refused), std::nullopt) << refused;
}

TEST(NumberText, readsIntegersOfSixtyFourBits) {
    EXPECT_EQ(parseInteger("+9223372036854775807"), INT64_MAX);
    EXPECT_EQ(parseInteger("-9223372036854775808"), INT64_MIN);
    for (const char* refused :
         {"", "+", "-", "+-1", "--1", "1.0", " 1", "9223372036854775808", "1e3"})
        EXPECT_EQ(parseInteger(refused), std::nullopt) << refused;

    EXPECT_EQ(parseUnsigned("18446744073709551615"), UINT64_MAX);
    for (const char* refused : {"", "-1", "+1", "18446744073709551616"})
        EXPECT_EQ(parseUnsigned(refused), std::nullopt) << refused;
}

TEST(NumberText, writesNumbersTheSameUnderEveryLocale) {
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(shortestDecimal(60), "60.0");
    EXPECT_EQ(shortestDecimal(-2.5), "-2.5");
    EXPECT_EQ(shortestDecimal(60.06), "60.06");
    EXPECT_EQ(shortestDecimal(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(fixedDecimal(2.675, 2), "2.67"); // the double is below the tie
    EXPECT_EQ(fixedDecimal(-0.5, 0), "-0");
    EXPECT_EQ(parseDecimal("1.5"), 1.5);
    std::setlocale(LC_ALL, "C");
}

} // namespace
} // namespace shotweaver
