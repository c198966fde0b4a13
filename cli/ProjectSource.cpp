#include "cli/ProjectSource.h"

#include "editor/ProjectFile.h"
#include "platform/PlatformError.h"

#include <array>
#include <istream>

namespace shotweaver {

std::string readStandardInput(std::istream& in) {
    std::string bytes;
    std::array<char, std::size_t{1} << 16U> block{};
    while (in.read(block.data(), block.size()) || in.gcount() > 0)
        bytes.append(block.data(), static_cast<std::size_t>(in.gcount()));
    if (in.bad()) throw PlatformError("The standard input could not be read.");
    return bytes;
}

std::string readProjectArgument(const std::string& project, std::istream& in) {
    return project == standardInput ? readStandardInput(in)
                                    : readProjectBytes(systemFileCalls(), project);
}

} // namespace shotweaver
