#pragma once

#include "engine/EditRevision.h"

#include <cstdint>
#include <vector>

namespace shotweaver {

/// The generated edits, oldest first, and the current one among them.
struct EditHistory {
    std::vector<EditRevision> items;
    std::int64_t index = -1; // of the current one; -1 when there is none

    /// Drops every revision after the current one, adds the new one and makes it current. The index
    /// must be valid.
    ///     given  a b [c] d e, append f     gives  a b c [f]
    void append(EditRevision revision);

    /// The revision at a position; null for a position outside of the history.
    const EditRevision* revision(std::int64_t position) const;
    const EditRevision* current() const { return revision(index); }

    /// True when the index is that of an item, or -1 without any. A history that was read may break
    /// this until it is checked.
    bool hasValidIndex() const;

    bool operator==(const EditHistory&) const = default;
};

} // namespace shotweaver
