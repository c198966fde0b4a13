#include "platform/DecimalFormat.h"

#include "platform/PlatformError.h"

#include <unicode/locid.h>
#include <unicode/numberformatter.h>

namespace shotweaver {

struct DecimalFormat::Formatter {
    icu::number::LocalizedNumberFormatter number;
};

DecimalFormat::DecimalFormat(const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale parsed = icu::Locale::forLanguageTag(locale, status);
    formatter_ = std::make_shared<Formatter>(
        Formatter{icu::number::NumberFormatter::withLocale(
                      U_SUCCESS(status) ? parsed : icu::Locale::getRoot())
                      .precision(icu::number::Precision::maxFraction(3))});
}

std::string DecimalFormat::text(double value) const {
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    const auto formatted = formatter_->number.formatDouble(value, status);
    formatted.toString(status).toUTF8String(text);
    if (U_FAILURE(status)) throw PlatformError("A number could not be written in this language.");
    return text;
}

} // namespace shotweaver
