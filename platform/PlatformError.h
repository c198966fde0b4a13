#pragma once

#include <stdexcept>
#include <string>

namespace shotweaver {

/// A failure that is not one of the system's own rules: malformed XML or JSON, a file call, the
/// operating system's random source. `what()` is a complete sentence in UTF-8 for the user.
class PlatformError : public std::runtime_error {
  public:
    explicit PlatformError(const std::string& sentence) : std::runtime_error(sentence) {}
};

} // namespace shotweaver
