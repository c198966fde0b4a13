#pragma once

#include "platform/XmlDocument.h"

namespace shotweaver {

/// Watches the children of one element, in their order, for one that stands where FCPXML does not
/// let it. The order is the one that clips, their sound, multicam clips and the picture settings of
/// an angle agree on; other elements have no place in it.
class ChildOrder {
  public:
    /// Whether the next child is the first one out of place: of a kind that comes before that of
    /// `last`, or of the same where only one may stand.
    bool isOutOfPlace(XmlNode child);

    /// The last child that was in place.
    XmlNode last() const { return last_; }

  private:
    int rank_ = 0;
    XmlNode last_;
    bool isTold_ = false;
};

} // namespace shotweaver
