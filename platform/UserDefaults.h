#pragma once

#include "platform/FileCalls.h"

#include <string>
#include <string_view>

namespace shotweaver {

/// The user's defaults: byte strings under names, each in a file of its own in one folder, which is
/// created when something is stored.
class UserDefaults {
  public:
    /// `calls` must outlive this.
    UserDefaults(FileCalls& calls, std::string folder);

    /// The bytes of an entry; empty when there is none. Throws `PlatformError` when there is one
    /// that cannot be read: that is not the same as none.
    std::string data(std::string_view name) const;

    /// Stores an entry: afterwards it holds the new bytes, or, when this throws `PlatformError`,
    /// still the old ones.
    void setData(std::string_view name, std::string_view bytes);

  private:
    FileCalls& calls_;
    std::string folder_;
};

} // namespace shotweaver
