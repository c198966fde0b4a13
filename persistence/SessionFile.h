#pragma once

#include "platform/ByteSink.h"
#include "platform/FileCalls.h"

#include <functional>
#include <optional>
#include <string>

namespace shotweaver {

/// The file in which the user's work is kept. Every operation throws `PlatformError`.
class SessionFile {
  public:
    /// `calls` must outlive this.
    SessionFile(FileCalls& calls, std::string folder) : calls_(calls), folder_(std::move(folder)) {}

    /// The file's bytes; nothing when there is no file. A file that cannot be read is an error.
    std::optional<std::string> read() const;

    /// Replaces the whole file: afterwards it holds what `session` gave it or still what it held.
    void write(const std::function<void(ByteSink&)>& session) const;

    /// Keeps what the file holds beside it, in place of what was kept before. False when there is
    /// no file.
    bool keep() const;

    /// What was kept last; nothing when nothing was.
    std::optional<std::string> readKept() const;

    /// Makes what was kept the session, and keeps what was the session.
    void exchangeWithKept() const;

  private:
    /// Creates the folder as well.
    std::string sessionFileURL() const;
    std::string keptFileURL() const;

    FileCalls& calls_;
    std::string folder_;
};

} // namespace shotweaver
