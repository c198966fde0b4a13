#include "platform/Dates.h"
#include "platform/Locale.h"
#include "platform/Uuid.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace shotweaver {
namespace {

/// Always the same bits.
struct SteadyBits final : RandomSource {
    explicit SteadyBits(std::uint64_t word) : word_(word) {}
    std::uint64_t bits() override { return word_; }

  private:
    std::uint64_t word_;
};

TEST(UUID, readsDigitsOfEitherCaseAndWritesUpperCase) {
    const auto uuid = UUID::parse("00112233-4455-6677-8899-aAbBcCdDeEfF");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->text(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(uuid->compactText(), "00112233445566778899AABBCCDDEEFF");
    EXPECT_EQ(UUID::parse(uuid->text()), uuid);

    for (const char* refused :
         {"", "00112233445566778899AABBCCDDEEFF", "{00112233-4455-6677-8899-AABBCCDDEEF}",
          "00112233-4455-6677-8899-AABBCCDDEEF", "00112233-4455-6677-8899-AABBCCDDEEFF0",
          "00112233-4455-6677-8899-AABBCCDDEEFG", "0011223-34455-6677-8899-AABBCCDDEEFF",
          "00112233-4455-6677-8899 AABBCCDDEEFF", " 0112233-4455-6677-8899-AABBCCDDEEFF"})
        EXPECT_EQ(UUID::parse(refused), std::nullopt) << refused;
}

TEST(UUID, randomOnesAreOfVersionFourAndNeverTheSame) {
    SteadyBits ones(UINT64_MAX);
    SteadyBits zeros(0);
    EXPECT_EQ(UUID::random(ones).text(), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
    EXPECT_EQ(UUID::random(zeros).text(), "00000000-0000-4000-8000-000000000000");

    const UUIDMaker make = secureUUIDs();
    std::set<std::string> texts;
    for (int i = 0; i < 1000; ++i)
        texts.insert(make().text());
    EXPECT_EQ(texts.size(), 1000U);
}

TEST(Dates, areWrittenInWholeSecondsOfUTC) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, const char*> cases[] = {
        {0, "2001-01-01T00:00:00Z"},
        {763221900.75, "2025-03-09T14:05:00Z"},
        {-0.25, "2000-12-31T23:59:59Z"},
        {-26524800, "2000-02-29T00:00:00Z"},
        {730943999.999, "2024-02-29T23:59:59Z"},
        {-3182198400, "1900-03-01T00:00:00Z"},
        {-3182198401, "1900-02-28T23:59:59Z"}, // no leap year
        {252423993599.5, "9999-12-31T23:59:59Z"},
        {-63145526400, "0000-01-01T00:00:00Z"},
        // Outside of the span that the form can hold.
        {252423993600, "9999-12-31T23:59:59Z"},
        {1e300, "9999-12-31T23:59:59Z"},
        {infinity, "9999-12-31T23:59:59Z"},
        {-63145526401, "0000-01-01T00:00:00Z"},
        {-1e300, "0000-01-01T00:00:00Z"},
        {-infinity, "0000-01-01T00:00:00Z"},
        {std::numeric_limits<double>::quiet_NaN(), "0000-01-01T00:00:00Z"},
    };
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(iso8601(seconds), text) << seconds;
}

TEST(LocalizedDecimal, followsTheLocaleAndKeepsThreeDecimals) {
    const struct {
        double value;
        const char* locale;
        const char* text;
    } cases[] = {
        {1234.5678, "de", "1.234,568"},
        {1234.5678, "en", "1,234.568"},
        {1234.5678, "und", "1,234.568"},
        {1234.5678, "no such locale!", "1,234.568"},
        {12.5, "de-AT", "12,5"},
        {-2.5, "de", "-2,5"},
        {3, "en", "3"},
        {0.04, "und", "0.04"},
        {999999.9996, "en", "1,000,000"},
        {1e15, "de", "1.000.000.000.000.000"},
    };
    for (const auto& [value, locale, text] : cases)
        EXPECT_EQ(localizedDecimal(value, locale), text) << locale;
}

} // namespace
} // namespace shotweaver
