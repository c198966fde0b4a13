#include "platform/Locale.h"

#include "platform/PlatformError.h"

#include <unicode/locid.h>
#include <unicode/numberformatter.h>

#include <string_view>

namespace shotweaver {

std::string userLocale() {
    const icu::Locale locale = icu::Locale::getDefault();
    // What ICU makes of the C locale is an English one whose collation compares bytes.
    if (std::string_view(locale.getVariant()) == "POSIX") return "und";
    UErrorCode status = U_ZERO_ERROR;
    const auto tag = locale.toLanguageTag<std::string>(status);
    return U_SUCCESS(status) ? tag : "und";
}

std::string localizedDecimal(double value, const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale parsed = icu::Locale::forLanguageTag(locale, status);
    const auto formatter = icu::number::NumberFormatter::withLocale(
                               U_SUCCESS(status) ? parsed : icu::Locale::getRoot())
                               .precision(icu::number::Precision::maxFraction(3));
    status = U_ZERO_ERROR;
    std::string text;
    const auto formatted = formatter.formatDouble(value, status);
    formatted.toString(status).toUTF8String(text);
    if (U_FAILURE(status)) throw PlatformError("A number could not be written in this language.");
    return text;
}

} // namespace shotweaver
