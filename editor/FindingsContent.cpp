#include "editor/FindingsContent.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

// More than anyone reads; the command line prints them all.
constexpr std::size_t mostParagraphs = 1000;

std::string things(std::size_t count) {
    return fmt::format("{} {}", count, count == 1 ? "thing" : "things");
}

} // namespace

std::string findingsLine(const std::vector<Finding>& findings) {
    const auto refused = static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const auto& each) { return each.kind == Finding::Kind::refused; }));
    const std::size_t changed = findings.size() - refused;
    const std::string comes = changed == 1 ? "comes" : "come";
    if (refused == 0)
        return changed == 0 ? ""
                            : fmt::format("{} in this project {} back changed from Final Cut",
                                          things(changed), comes);
    const std::string line = fmt::format("{} in this project would stop an export or its import "
                                         "into Final Cut",
                                         things(refused));
    return changed == 0 ? line : fmt::format("{}, {} {} back changed", line, changed, comes);
}

std::string findingsText(const std::vector<Finding>& findings) {
    std::string text;
    const std::size_t shown = std::min(findings.size(), mostParagraphs);
    for (std::size_t i = 0; i < shown; ++i)
        text += fmt::format("{}{}: {}", i == 0 ? "" : "\n",
                            findings[i].kind == Finding::Kind::refused ? "Refused" : "Changed",
                            findings[i].text);
    if (shown < findings.size())
        text += fmt::format("\nThere are {} more. “shotweaver inspect” prints them all.",
                            findings.size() - shown);
    return text;
}

} // namespace shotweaver
