#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace shotweaver {

/// Looks for one text in others as a reader would: upper and lower case are alike, so are letters
/// with and without an accent ("cafe" is in "Le CAFÉ") unless the locale's alphabet has them as
/// letters of their own (a Swedish "ö"). Characters that nobody sees, a soft hyphen say, count for
/// nothing; a text of such characters only, like an empty one, is in every text.
class TextSearch {
  public:
    /// `locale` is a BCP 47 tag; an unknown one counts as the root.
    TextSearch(std::string_view wanted, const std::string& locale);

    bool isIn(std::string_view text) const;

  private:
    struct Rules;

    std::u16string lettersOf(std::string_view text) const;

    std::shared_ptr<const Rules> rules_;
    std::u16string wanted_;
};

} // namespace shotweaver
