#include "cli/TextTable.h"

#include "platform/Text.h"

#include <algorithm>
#include <cassert>

namespace shotweaver {

namespace {

constexpr std::size_t columnGap = 2;

// A longer cell shifts its own line and leaves the others alone.
constexpr std::size_t widestColumn = 100;

} // namespace

std::string oneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, ' ');
    return text;
}

void TextTable::add(std::vector<std::string> row) {
    assert(row.size() == columns_.size());
    for (std::string& cell : row)
        cell = oneLine(std::move(cell));
    rows_.push_back(std::move(row));
}

std::string TextTable::text() const {
    std::vector<std::vector<std::string>> lines{{}};
    for (const Column& column : columns_)
        lines.front().push_back(column.title);
    lines.insert(lines.end(), rows_.begin(), rows_.end());

    std::vector<std::size_t> widths(columns_.size());
    for (const auto& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::min(std::max(widths[i], displayWidth(line[i])), widestColumn);
    }
    std::string text;
    for (const auto& line : lines) {
        std::string row;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::size_t width = displayWidth(line[i]);
            const std::string padding(widths[i] - std::min(widths[i], width), ' ');
            const bool isRight = columns_[i].align == Align::right;
            if (i > 0) row.append(columnGap, ' ');
            row += isRight ? padding + line[i] : line[i] + padding;
        }
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + "\n";
    }
    return text;
}

std::string coverageBar(const Coverage& coverage, std::int64_t length, std::size_t characters) {
    std::string bar;
    for (std::size_t i = 0; i < characters; ++i) {
        // A character stands for one frame at least, also in a project shorter than the bar.
        const auto place = [&](std::size_t at) {
            return length * static_cast<std::int64_t>(at) / static_cast<std::int64_t>(characters);
        };
        const FrameRange part{place(i), std::max(place(i + 1), place(i) + 1)};
        const auto overlap =
            std::find_if(coverage.begin(), coverage.end(), [&](const FrameRange& range) {
                return range.lowerBound < part.upperBound && part.lowerBound < range.upperBound;
            });
        if (overlap == coverage.end())
            bar += "·";
        else
            bar += overlap->contains(part) ? "█" : "▒";
    }
    return bar;
}

} // namespace shotweaver
