#include "engine/EditRevision.h"

#include <algorithm>
#include <iterator>

namespace shotweaver {

std::vector<Cut> keptCuts(const std::vector<Cut>& cuts, const KeptShots& kept) {
    std::vector<Cut> found;
    if (kept.empty()) return found;
    std::copy_if(cuts.begin(), cuts.end(), std::back_inserter(found),
                 [&](const Cut& cut) { return kept.contains(cut.id); });
    return found;
}

} // namespace shotweaver
