#pragma once

#include "editor/Observers.h"

#include <functional>
#include <optional>
#include <string>

namespace shotweaver {

/// Where the host's side leaves what it received for the editor. Observers are called after
/// every assignment, clearing included. The editor clears each value that it takes, so that it is
/// used once. On the main thread only.
class XMLInbox {
  public:
    /// The one that the host's views and the editor share.
    static XMLInbox& shared();

    /// The "file:" URL of a ".fcpxml" file or ".fcpxmld" bundle to be read.
    const std::optional<std::string>& url() const { return url_; }
    /// Bytes of FCPXML from a drag.
    const std::optional<std::string>& xmlData() const { return xmlData_; }
    /// Why a drag was refused, a sentence.
    const std::optional<std::string>& importError() const { return importError_; }

    void setURL(std::optional<std::string> url);
    void setXMLData(std::optional<std::string> bytes);
    void setImportError(std::optional<std::string> sentence);

    [[nodiscard]] Observers::Subscription observe(std::function<void()> observer);

  private:
    std::optional<std::string> url_;
    std::optional<std::string> xmlData_;
    std::optional<std::string> importError_;
    Observers observers_;
};

} // namespace shotweaver
