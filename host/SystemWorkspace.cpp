#include "host/SystemWorkspace.h"

#include "host/DesktopWorkspace.h"
#include "host/MacWorkspace.h"

#include <utility>

namespace shotweaver {

std::unique_ptr<Workspace> systemWorkspace(Environment environment) {
#if defined(__APPLE__)
    return std::make_unique<MacWorkspace>(std::move(environment));
#else
    return std::make_unique<DesktopWorkspace>(systemFileCalls(), std::move(environment));
#endif
}

} // namespace shotweaver
