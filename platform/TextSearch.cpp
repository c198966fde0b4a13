#include "platform/TextSearch.h"

#include "platform/IcuLocale.h"
#include "platform/PlatformError.h"

#include <unicode/coleitr.h>
#include <unicode/tblcoll.h>
#include <unicode/unistr.h>

#include <cstdint>

namespace shotweaver {

namespace {

void require(UErrorCode status) {
    if (U_FAILURE(status)) throw PlatformError("Text cannot be searched in this language.");
}

} // namespace

/// A text's letters to the collation, and where each stands in it.
struct TextSearch::Letters {
    std::u16string letters;
    std::vector<Hit> places;
};

struct TextSearch::Rules {
    std::shared_ptr<const icu::RuleBasedCollator> collator;
};

TextSearch::TextSearch(std::string_view wanted, const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const std::shared_ptr<icu::Collator> collator(
        icu::Collator::createInstance(icuLocale(locale), status));
    require(status);
    collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
    require(status);
    // Only collators by rules, which all are by now, tell what they make of a text.
    const auto byRules = std::dynamic_pointer_cast<const icu::RuleBasedCollator>(collator);
    if (!byRules) require(U_UNSUPPORTED_ERROR);
    rules_ = std::make_shared<const Rules>(Rules{byRules});
    wanted_ = lettersOf(wanted).letters;
}

bool TextSearch::isIn(std::string_view text) const {
    return lettersOf(text).letters.find(wanted_) != std::u16string::npos;
}

std::vector<TextSearch::Hit> TextSearch::hitsIn(std::string_view text) const {
    std::vector<Hit> hits;
    if (wanted_.empty()) return hits;
    const auto [letters, places] = lettersOf(text);
    for (std::size_t at = letters.find(wanted_); at != std::u16string::npos;
         at = letters.find(wanted_, at + wanted_.size())) {
        const std::size_t start = places[at].start;
        const Hit& last = places[at + wanted_.size() - 1];
        hits.push_back({start, last.start + last.length - start});
    }
    return hits;
}

/// What the collation makes of a text at its first level: letters, digits, spaces and signs without
/// their case and accents. The library's own string search refuses empty texts and finds nothing
/// where all that is wanted is ignored.
TextSearch::Letters TextSearch::lettersOf(std::string_view text) const {
    const auto characters =
        icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    const std::unique_ptr<icu::CollationElementIterator> elements(
        rules_->collator->createCollationElementIterator(characters));
    if (!elements) require(U_MEMORY_ALLOCATION_ERROR);
    UErrorCode status = U_ZERO_ERROR;
    Letters letters;
    std::size_t start = 0;
    for (std::int32_t element = elements->next(status);
         element != icu::CollationElementIterator::NULLORDER; element = elements->next(status)) {
        require(status);
        const std::int32_t letter = icu::CollationElementIterator::primaryOrder(element);
        const auto end = static_cast<std::size_t>(elements->getOffset());
        if (letter != 0) {
            letters.letters += static_cast<char16_t>(letter);
            letters.places.push_back({start, end - start});
        } else if (!letters.places.empty()) { // an accent, say
            letters.places.back().length = end - letters.places.back().start;
        }
        start = end;
    }
    require(status);
    return letters;
}

} // namespace shotweaver
