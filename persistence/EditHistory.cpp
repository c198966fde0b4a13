#include "persistence/EditHistory.h"

#include <cassert>
#include <iterator>
#include <utility>

namespace shotweaver {

void EditHistory::append(EditRevision revision) {
    assert(hasValidIndex());
    items.erase(items.begin() + (index + 1), items.end());
    items.push_back(std::move(revision));
    index = std::ssize(items) - 1;
}

const EditRevision* EditHistory::revision(std::int64_t position) const {
    if (position < 0 || position >= std::ssize(items)) return nullptr;
    return &items[static_cast<std::size_t>(position)];
}

bool EditHistory::hasValidIndex() const {
    return items.empty() ? index == -1 : current() != nullptr;
}

} // namespace shotweaver
