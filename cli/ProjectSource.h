#pragma once

#include "engine/ProjectImport.h"
#include "platform/ByteSource.h"

#include <iosfwd>
#include <string>

namespace shotweaver {

/// What a PROJECT or REVISION argument of "-" stands for.
inline constexpr const char* standardInput = "-";

/// The standard input; the stream must outlive the source.
class StreamSource final : public ByteSource {
  public:
    explicit StreamSource(std::istream& in) : in_(in) {}
    std::size_t read(char* into, std::size_t count) override;

  private:
    std::istream& in_;
};

/// Imports a PROJECT argument: a file, a bundle, or "-". Throws `FinalCutImportError` or
/// `PlatformError`.
ProjectImport importProjectArgument(const std::string& project, std::istream& in);

} // namespace shotweaver
