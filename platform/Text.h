#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// Text is UTF-8. Bytes that are not do no harm: they are kept, or stand as U+FFFD.

/// Bytes as well-formed UTF-8: what is not stands as U+FFFD.
std::string toUTF8(std::string_view bytes);

/// True when the bytes are well-formed UTF-8.
bool isUTF8(std::string_view text);

/// Canonical composition (NFC): canonically equivalent texts give the same bytes.
std::string normalizedNFC(std::string_view text);

/// Without Unicode white space and line breaks at both ends.
std::string_view trimmed(std::string_view text);

/// Lower case by Unicode's rules for no particular language.
std::string lowercased(std::string_view text);

/// The first `count` user-perceived characters (extended grapheme clusters).
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// The columns that a text takes on a terminal: two for a wide East Asian character, none for a
/// combining mark.
std::size_t displayWidth(std::string_view text);

/// A set of texts in which canonically equivalent ones are one (the first one added stays), in
/// ascending order of the Unicode scalar values of their NFC form.
class TextSet {
  public:
    void add(std::string_view text);
    std::vector<std::string> sorted() const;

  private:
    // UTF-8 bytes sort like the scalar values they encode.
    std::map<std::string, std::string, std::less<>> textByNFC_;
};

/// The texts with `separator` between each two.
std::string joined(const std::vector<std::string>& texts, std::string_view separator);

/// The pieces between separators, empty ones kept: always at least one.
std::vector<std::string_view> split(std::string_view text, char separator);

} // namespace shotweaver
