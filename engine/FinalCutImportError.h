#pragma once

#include <stdexcept>
#include <string>

namespace shotweaver {

/// The one error of import, engine construction, generation and export: a complete sentence for
/// the user (`what()`, UTF-8), shown unchanged.
class FinalCutImportError : public std::runtime_error {
  public:
    static FinalCutImportError invalid(const std::string& sentence) {
        return FinalCutImportError(sentence);
    }

  private:
    using std::runtime_error::runtime_error;
};

} // namespace shotweaver
