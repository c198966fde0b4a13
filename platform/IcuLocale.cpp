#include "platform/IcuLocale.h"

namespace shotweaver {

icu::Locale icuLocale(const std::string& tag) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale = icu::Locale::forLanguageTag(tag, status);
    return U_SUCCESS(status) ? locale : icu::Locale::getRoot();
}

} // namespace shotweaver
