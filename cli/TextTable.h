#pragma once

#include "engine/FrameRange.h"

#include <cstddef>
#include <string>
#include <vector>

namespace shotweaver {

enum class Align { left, right };

/// A table in plain text: a row of titles and rows of texts, columns as wide as their widest text
/// on a terminal. Line breaks and other control characters in a text become spaces.
class TextTable {
  public:
    struct Column {
        std::string title;
        Align align = Align::left;
    };

    explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// One text for each column.
    void add(std::vector<std::string> row);

    /// Lines, each ended by a line feed, without white space at their ends.
    std::string text() const;

  private:
    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

/// A text as it can stand in one line of a terminal: control characters become spaces.
std::string oneLine(std::string text);

/// Coverage as a bar of characters, each for an equal part of [0, length): "█" covered, "▒" partly
/// covered, "·" not covered.
std::string coverageBar(const Coverage& coverage, std::int64_t length, std::size_t characters);

} // namespace shotweaver
