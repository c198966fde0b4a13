#include "cli/EditArgument.h"

#include "cli/ProjectSource.h"
#include "persistence/RecordJson.h"
#include "planning/CutListCsv.h"
#include "planning/ProjectDefaults.h"
#include "platform/Dates.h"
#include "platform/Files.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <set>

namespace shotweaver {

namespace {

bool isJsonObject(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '{';
}

/// The rows "7" or "7-9", counted from 0: the first, and the one behind the last.
std::pair<std::uint64_t, std::uint64_t> rowsIn(std::string_view text, std::size_t count) {
    const std::size_t hyphen = text.find('-');
    const auto first = parseUnsigned(trimmed(text.substr(0, hyphen)));
    const auto last =
        hyphen == std::string_view::npos ? first : parseUnsigned(trimmed(text.substr(hyphen + 1)));
    if (!first || !last || *first < 1 || *last < *first)
        throw UsageError(
            fmt::format("--keep: \"{}\" is not a shot's number, or two as in 7-9.", text));
    if (*last > count)
        throw UsageError(
            fmt::format("--keep: the edit has {} shots; there is no shot {}.", count, *last));
    return {*first - 1, *last};
}

} // namespace

EditArgument readEditArgument(const std::string& path, const Project& project,
                              const CommandContext& context) {
    const std::string text =
        path == standardInput ? readAll(context.in) : readFile(context.files, path);
    if (isJsonObject(text)) {
        const Json json = parseJson(text);
        return {readRevision(JsonReader(json)), readKeptShots(JsonReader(json)), false};
    }
    CsvCutList list = readCutListCsv(text, project, secureUUIDs());
    return {{secureUUIDs()(), secondsSince2001Now(), importedSettings(project, {}),
             std::move(list.cuts)},
            std::move(list.kept),
            true};
}

std::vector<Cut> cutsInRows(const std::vector<Cut>& cuts, std::string_view rows) {
    std::set<std::uint64_t> chosen;
    for (const std::string_view piece : split(rows, ',')) {
        const auto [first, end] = rowsIn(piece, cuts.size());
        for (std::uint64_t row = first; row < end; ++row)
            chosen.insert(row);
    }
    std::vector<Cut> found;
    found.reserve(chosen.size());
    for (const std::uint64_t row : chosen)
        found.push_back(cuts[row]);
    return found;
}

} // namespace shotweaver
