#include "cli/Warnings.h"

#include "cli/TextTable.h"

#include <fmt/format.h>

namespace shotweaver {

std::string warningLines(const std::vector<Finding>& findings) {
    std::string lines;
    for (const Finding& finding : findings)
        lines += fmt::format("warning: {}\n", oneLine(finding.text));
    return lines;
}

} // namespace shotweaver
