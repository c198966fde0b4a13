#pragma once

#include "help/ShotweaverManual.h"
#include "platform/TextSearch.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// All the words of a section that a search looks at: title, summary, then for each block its text,
/// its items and the titles of its links, joined with single spaces.
std::string searchText(const ShotweaverManual::Section& section);

/// What a help view shows: the manual or why there is none, the query and the topics that it
/// leaves, and the selected topic. Pointers given out point into it.
class HelpContent {
  public:
    /// `locale` is a BCP 47 tag; queries match as its users expect.
    HelpContent(ManualResult manual, std::string locale);

    /// Null when the manual could not be loaded; then there are no sections.
    const ShotweaverManual* manual() const { return std::get_if<ShotweaverManual>(&manual_); }
    /// Null when it could.
    const ManualError* error() const { return std::get_if<ManualError>(&manual_); }

    /// As typed.
    const std::string& query() const { return query_; }
    /// "quick-start" at first, whether or not the manual has such a section.
    const std::optional<std::string>& selectedID() const { return selectedID_; }
    /// Those that match the query, in the manual's order.
    std::vector<const ShotweaverManual::Section*> sections() const;
    /// The selected one of them, or else the first; null when there are none.
    const ShotweaverManual::Section* shownSection() const;
    /// Where the query stands in a text of the manual; nowhere without one.
    std::vector<TextSearch::Hit> hitsIn(const std::string& text) const;
    /// The line under the search field.
    std::string countLine() const;

    /// The selection stays while its section matches, and moves to the first match when it does
    /// not.
    void setQuery(std::string query);
    void select(std::optional<std::string> id);
    /// Clears the query.
    void showAll() { setQuery(""); }

  private:
    const ShotweaverManual::Section* sectionWithID(std::string_view id) const;
    void filter();

    ManualResult manual_;
    std::string locale_;
    std::string query_;
    std::optional<TextSearch> search_; // for what the query wants, unless that is nothing
    std::optional<std::string> selectedID_ = "quick-start";
    std::vector<std::size_t> matches_; // places in the manual, in order
};

} // namespace shotweaver
