#include "help/HelpContent.h"

#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace shotweaver {

std::string searchText(const ShotweaverManual::Section& section) {
    std::vector<std::string> texts{section.title, section.summary};
    for (const ShotweaverManual::Block& block : section.blocks) {
        if (block.text) texts.push_back(*block.text);
        if (block.items) texts.insert(texts.end(), block.items->begin(), block.items->end());
        if (!block.links) continue;
        for (const ShotweaverManual::LinkItem& link : *block.links)
            texts.push_back(link.title);
    }
    return joined(texts, " ");
}

HelpContent::HelpContent(ManualResult manual, std::string locale)
    : manual_(std::move(manual)), locale_(std::move(locale)) {
    filter();
}

std::vector<const ShotweaverManual::Section*> HelpContent::sections() const {
    std::vector<const ShotweaverManual::Section*> sections;
    for (const std::size_t match : matches_)
        sections.push_back(&manual()->sections[match]);
    return sections;
}

const ShotweaverManual::Section* HelpContent::shownSection() const {
    const ShotweaverManual::Section* const selected =
        selectedID_ ? sectionWithID(*selectedID_) : nullptr;
    if (selected || matches_.empty()) return selected;
    return &manual()->sections[matches_.front()];
}

std::vector<TextSearch::Hit> HelpContent::hitsIn(const std::string& text) const {
    return search_ ? search_->hitsIn(text) : std::vector<TextSearch::Hit>{};
}

std::string HelpContent::countLine() const {
    return fmt::format("{} {}", matches_.size(),
                       trimmed(query_).empty() ? "topics · Available offline" : "matching topics");
}

void HelpContent::setQuery(std::string query) {
    if (query == query_) return;
    query_ = std::move(query);
    filter();
    if (selectedID_ && sectionWithID(*selectedID_)) return;
    selectedID_.reset();
    if (!matches_.empty()) selectedID_ = manual()->sections[matches_.front()].id;
}

void HelpContent::select(std::optional<std::string> id) {
    selectedID_ = std::move(id);
}

/// Among those that match the query.
const ShotweaverManual::Section* HelpContent::sectionWithID(std::string_view id) const {
    const auto found = std::find_if(matches_.begin(), matches_.end(), [&](std::size_t match) {
        return manual()->sections[match].id == id;
    });
    return found == matches_.end() ? nullptr : &manual()->sections[*found];
}

void HelpContent::filter() {
    matches_.clear();
    if (!manual()) return;
    const std::string_view wanted = trimmed(query_);
    search_.reset();
    if (!wanted.empty()) search_.emplace(wanted, locale_);
    for (std::size_t place = 0; place < manual()->sections.size(); ++place) {
        if (!search_ || search_->isIn(searchText(manual()->sections[place])))
            matches_.push_back(place);
    }
}

} // namespace shotweaver
