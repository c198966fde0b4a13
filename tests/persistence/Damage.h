#pragma once

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace shotweaver::test {

/// A change of a stored text, and the sentence with which it is refused; empty when it is read.
struct Change {
    std::string from;
    std::string to;
    std::string failure;
};

/// Each row is "from|to;from|to" and the sentence of all its changes.
inline std::vector<Change>
changes(std::initializer_list<std::pair<const char*, std::string>> rows) {
    std::vector<Change> changes;
    for (const auto& [texts, failure] : rows) {
        for (const std::string_view text : split(texts, ';')) {
            const auto parts = split(text, '|');
            changes.push_back({std::string(parts.at(0)), std::string(parts.at(1)), failure});
        }
    }
    return changes;
}

/// Reads every beginning of a stored text, none of which is one, and the text with one byte
/// changed, 2,000 times, which is read or refused with one of our two errors.
template <class Read>
void expectDamageIsReadOrRefused(const std::string& text, Read read) {
    std::size_t refused = 0;
    const auto readOrRefuse = [&](const std::string& damaged) {
        try {
            read(damaged);
        } catch (const std::runtime_error&) { // the base of both, and of none of the library's
            ++refused;
        }
    };
    for (std::size_t length = 1; length < text.size(); ++length)
        readOrRefuse(text.substr(0, length));
    EXPECT_EQ(refused, text.size() - 1);

    std::mt19937 random(20010101);
    for (int i = 0; i < 2000; ++i) {
        std::string damaged = text;
        damaged[random() % text.size()] = static_cast<char>(random());
        EXPECT_NO_THROW(readOrRefuse(damaged)) << damaged;
    }
}

} // namespace shotweaver::test
