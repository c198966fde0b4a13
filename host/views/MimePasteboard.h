#pragma once

#include "host/FinalCutIntegration.h"

class QMimeData;

namespace shotweaver {

/// A drag's data as a pasteboard. On X11 and Wayland a type's name arrives as it is; where the
/// platform has names of its own for types it is the toolkit that has to be told of them, here.
class MimePasteboard final : public Pasteboard {
  public:
    /// `data` must outlive this.
    explicit MimePasteboard(const QMimeData& data) : data_(data) {}

    std::vector<std::string> types() const override;
    std::optional<std::string> data(const std::string& type) const override;

  private:
    const QMimeData& data_;
};

} // namespace shotweaver
