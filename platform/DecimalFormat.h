#pragma once

#include <memory>
#include <string>

namespace shotweaver {

/// Writes numbers in a locale's own style with at most three decimals: 1234.5678 is "1.234,568" in
/// "de". Making one costs much more than writing a number.
class DecimalFormat {
  public:
    /// A BCP 47 tag; an unknown one counts as the root, whose style is English.
    explicit DecimalFormat(const std::string& locale);

    std::string text(double value) const;

  private:
    struct Formatter;
    std::shared_ptr<const Formatter> formatter_;
};

} // namespace shotweaver
