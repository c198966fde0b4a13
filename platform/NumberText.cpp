#include "platform/NumberText.h"

#include <fast_float/fast_float.h>
#include <fmt/format.h>

#include <locale.h>
#ifdef __APPLE__
#include <xlocale.h>
#endif

#include <charconv>
#include <cmath>
#include <cstddef>
#include <new>

namespace shotweaver {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isSign(char c) {
    return c == '+' || c == '-';
}

/// The position after the digits that start at `from`.
std::size_t skipDigits(std::string_view text, std::size_t from) {
    while (from < text.size() && isDigit(text[from]))
        ++from;
    return from;
}

/// Unsigned decimal form: digits[.digits][e[sign]digits] and nothing else.
bool isDecimalForm(std::string_view text) {
    std::size_t at = skipDigits(text, 0);
    if (at == 0) return false;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fraction = at + 1;
        at = skipDigits(text, fraction);
        if (at == fraction) return false;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        std::size_t exponent = at + 1;
        if (exponent < text.size() && isSign(text[exponent])) ++exponent;
        at = skipDigits(text, exponent);
        if (at == exponent) return false;
    }
    return at == text.size();
}

/// The C locale for one thread, while it lives.
class ThreadLocale {
  public:
    ThreadLocale() : plain_(newlocale(LC_ALL_MASK, "C", nullptr)) {
        if (plain_ == nullptr) throw std::bad_alloc();
        former_ = uselocale(plain_);
    }
    ThreadLocale(const ThreadLocale&) = delete;
    ThreadLocale& operator=(const ThreadLocale&) = delete;
    ~ThreadLocale() {
        uselocale(former_);
        freelocale(plain_);
    }

  private:
    locale_t plain_;
    locale_t former_ = nullptr;
};

} // namespace

std::optional<double> parseDecimal(std::string_view text) {
    const bool hasSign = !text.empty() && isSign(text.front());
    const std::string_view digits = hasSign ? text.substr(1) : text;
    const bool isNegative = hasSign && text.front() == '-';

    // Most numbers of an export are whole ones that a double holds exactly.
    constexpr std::size_t exactDigits = 15;
    if (digits.size() <= exactDigits) {
        if (const auto whole = parseUnsigned(digits))
            return isNegative ? -static_cast<double>(*whole) : static_cast<double>(*whole);
    }
    if (!isDecimalForm(digits)) return std::nullopt;

    // The form is checked, so the only error left is a number out of range; its value is then
    // already the nearest one, an infinity or zero.
    double value = 0;
    fast_float::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (!std::isfinite(value)) return std::nullopt;
    return isNegative ? -value : value;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (text.empty() || !isDigit(text.front())) return std::nullopt;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<std::uint64_t> parseUnsigned(std::string_view text) {
    if (text.empty() || !isDigit(text.front())) return std::nullopt;
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::string shortestDecimal(double value) {
    std::string text = fmt::format("{}", value);
    if (text.find_first_not_of("-0123456789") == std::string::npos) text += ".0";
    return text;
}

std::string fixedDecimal(double value, int decimals) {
    return fmt::format("{:.{}f}", value, decimals);
}

void withPlainNumbers(const std::function<void()>& work) {
    const ThreadLocale plain;
    work();
}

} // namespace shotweaver
