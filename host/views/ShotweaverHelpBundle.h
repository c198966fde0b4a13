#pragma once

#include <string>

namespace shotweaver {

/// What the manual belongs to: the program's other files, beside the folder that holds it.
class ShotweaverHelpBundle {
  public:
    /// Where a resource lies. Nothing says that it is there.
    static std::string path(const std::string& resource, const std::string& extension);
};

} // namespace shotweaver
