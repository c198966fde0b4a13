#pragma once

#include "tests/support/ProjectBuilder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace shotweaver::test {

/// One thing that is wrong with a document: every `from` in it becomes `to`.
struct Fault {
    std::string from;
    std::string to;
    std::string sentence; // what the document is refused with
};

/// Spoils `text` by the faults from `first` on. The last one goes first, so that an earlier fault
/// may hide a later one in the same attribute: `duration=` becomes `duration="x" hidden=`.
inline std::string spoiled(std::string text, const std::vector<Fault>& faults, std::size_t first) {
    for (std::size_t i = faults.size(); i-- > first;) {
        const Fault& fault = faults[i];
        std::size_t at = text.find(fault.from);
        if (at == std::string::npos) throw std::logic_error("nothing to spoil: " + fault.from);
        for (; at != std::string::npos; at = text.find(fault.from, at + fault.to.size()))
            text.replace(at, fault.from.size(), fault.to);
    }
    return text;
}

/// The faults come in the order of the checks: a document with all of them is refused for the
/// first, without that for the second, and so on until nothing is wrong.
template <class Call>
void expectChecksInOrder(const std::string& text, const std::vector<Fault>& faults, Call call) {
    for (std::size_t i = 0; i < faults.size(); ++i) {
        const std::string document = spoiled(text, faults, i);
        EXPECT_EQ(failureOf([&] { call(document); }), faults[i].sentence) << document;
    }
    EXPECT_EQ(failureOf([&] { call(text); }), "");
}

} // namespace shotweaver::test
