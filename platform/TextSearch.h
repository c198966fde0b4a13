#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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

    /// A stretch of a text, in its UTF-16 units.
    struct Hit {
        std::size_t start = 0;
        std::size_t length = 0;

        bool operator==(const Hit&) const = default;
    };

    /// Where the wanted text stands, in order, none inside of another. Nowhere when nothing that is
    /// seen is wanted.
    std::vector<Hit> hitsIn(std::string_view text) const;

  private:
    struct Rules;

    struct Letters;

    Letters lettersOf(std::string_view text) const;

    std::shared_ptr<const Rules> rules_;
    std::u16string wanted_;
};

} // namespace shotweaver
