#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace shotweaver {

/// The user's locale as a BCP 47 tag ("de-AT"), or "und" (the root) for the C and POSIX locales and
/// for none.
std::string userLocale();

/// Writes numbers in a locale's own style with at most three decimals: 1234.5678 is "1.234,568" in
/// "de". Making one costs much more than writing a number. An unknown locale counts as the root,
/// whose style is English.
class DecimalFormat {
  public:
    explicit DecimalFormat(const std::string& locale);

    std::string text(double value) const;

  private:
    struct Formatter;
    std::shared_ptr<const Formatter> formatter_;
};

/// The order of names as a user of a locale expects it: letters by its alphabet, upper and lower
/// case alike, digits by the number they make ("Preset 2" before "Preset 10"). An unknown locale
/// counts as the root.
class NameCollator {
  public:
    explicit NameCollator(const std::string& locale);

    /// Negative when `a` stands before `b`, positive when after. Names that differ in case or in
    /// leading zeros only have an order too: 0 means canonically equivalent. Bytes that are not
    /// UTF-8 do no harm.
    int compare(std::string_view a, std::string_view b) const;

  private:
    struct Rules;
    std::shared_ptr<const Rules> rules_;
};

} // namespace shotweaver
