#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"

#include <string>
#include <string_view>
#include <vector>

namespace shotweaver::fuzz {

/// What every export promises, read from its text alone and from the imported clip: the frame times
/// of its clips, their sources, fades only at the ends, tracked shapes with identifiers of their
/// own, each connected item and point once, each span as long in all as it was. Read back it is
/// refused for its many clips, or is the same project when there is one.
///
/// Annotations and connected items are told apart by kind and by "value" or "name"; those that
/// share both are counted together.
void checkExport(const CutEngine& engine, const std::vector<Cut>& cuts, const std::string& audio,
                 std::string_view exported);

} // namespace shotweaver::fuzz
