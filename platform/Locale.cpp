#include "platform/Locale.h"

#include "platform/IcuLocale.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <unicode/coll.h>
#include <unicode/numberformatter.h>

#include <cstdint>

namespace shotweaver {

namespace {

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

} // namespace

std::string userLocale() {
    const icu::Locale locale = icu::Locale::getDefault();
    // What ICU makes of the C locale is an English one whose collation compares bytes.
    if (std::string_view(locale.getVariant()) == "POSIX") return "und";
    UErrorCode status = U_ZERO_ERROR;
    const auto tag = locale.toLanguageTag<std::string>(status);
    return U_SUCCESS(status) ? tag : "und";
}

struct DecimalFormat::Formatter {
    icu::number::LocalizedNumberFormatter number;
};

DecimalFormat::DecimalFormat(const std::string& locale)
    : formatter_(std::make_shared<const Formatter>(
          Formatter{icu::number::NumberFormatter::withLocale(icuLocale(locale))
                        .precision(icu::number::Precision::maxFraction(3))})) {}

std::string DecimalFormat::text(double value) const {
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    const auto formatted = formatter_->number.formatDouble(value, status);
    formatted.toString(status).toUTF8String(text);
    if (U_FAILURE(status)) throw PlatformError("A number could not be written in this language.");
    return text;
}

struct NameCollator::Rules {
    std::unique_ptr<icu::Collator> collator;
};

NameCollator::NameCollator(const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(icuLocale(locale), status));
    if (U_SUCCESS(status)) {
        collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
        // Its three levels one after the other: letters, then accents, and case only between names
        // that are equal but for it.
        collator->setAttribute(UCOL_STRENGTH, UCOL_TERTIARY, status);
        collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
    }
    if (U_FAILURE(status)) throw PlatformError("Names cannot be sorted in this language.");
    rules_ = std::make_shared<const Rules>(Rules{std::move(collator)});
}

int NameCollator::compare(std::string_view a, std::string_view b) const {
    UErrorCode status = U_ZERO_ERROR;
    const int order = rules_->collator->compareUTF8(piece(a), piece(b), status);
    if (U_FAILURE(status)) throw PlatformError("Names cannot be compared in this language.");
    return order != 0 ? order : normalizedNFC(a).compare(normalizedNFC(b));
}

} // namespace shotweaver
