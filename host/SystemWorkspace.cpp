#include "host/SystemWorkspace.h"

#if defined(__APPLE__)
#include "host/MacWorkspace.h"
#else
#include "host/DesktopWorkspace.h"
#endif

#include <utility>

namespace shotweaver {

std::unique_ptr<Workspace> systemWorkspace(Environment environment) {
#if defined(__APPLE__)
    return std::make_unique<MacWorkspace>(std::move(environment));
#else
    return std::make_unique<DesktopWorkspace>(std::move(environment));
#endif
}

} // namespace shotweaver
