#include "fuzz/TimeOracle.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace shotweaver::fuzz {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The digits that a text starts with, taken off it.
std::string takeDigits(std::string_view& text) {
    std::string digits;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1))
        digits += text.front();
    return digits;
}

bool takeSign(std::string_view& text) {
    const bool isSigned = text.starts_with('+') || text.starts_with('-');
    if (isSigned) text.remove_prefix(1);
    return isSigned;
}

std::optional<double> decimal(std::string_view text) {
    const std::string whole(text);
    takeSign(text);
    if (takeDigits(text).empty()) return std::nullopt;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (takeDigits(text).empty()) return std::nullopt;
    }
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        takeSign(text);
        if (takeDigits(text).empty()) return std::nullopt;
    }
    if (!text.empty()) return std::nullopt;
    // The fuzzers set no locale, so this is the C one's full stop.
    const double value = std::strtod(whole.c_str(), nullptr);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<Wide> integer(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    takeSign(text);
    const std::string digits = takeDigits(text);
    if (digits.empty() || !text.empty()) return std::nullopt;
    Wide value = 0;
    for (const char digit : digits) {
        value = value * 10 + (digit - '0');
        if (value > Wide{INT64_MAX} + 1) return std::nullopt;
    }
    if (isNegative) value = -value;
    return value > INT64_MAX ? std::nullopt : std::optional(value);
}

std::vector<std::string_view> pieces(std::string_view text, char separator) {
    std::vector<std::string_view> found{text.substr(0, text.find(separator))};
    while (found.back().size() < text.size()) {
        text.remove_prefix(found.back().size() + 1);
        found.push_back(text.substr(0, text.find(separator)));
    }
    return found;
}

bool fits(Wide value) {
    return value >= INT64_MIN && value <= INT64_MAX;
}

std::string decimalText(Wide value) {
    std::string digits;
    for (Wide rest = value < 0 ? -value : value; rest > 0 || digits.empty(); rest /= 10)
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    return (value < 0 ? "-" : "") + digits;
}

/// Unicode's white space in UTF-8.
const std::array<std::string_view, 25> whiteSpace{
    "\t",           "\n",           "\v",           "\f",           "\r",           " ",
    "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",
    "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88",
    "\xE2\x80\x89", "\xE2\x80\x8A", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F",
    "\xE3\x80\x80"};

std::string_view withoutSpace(std::string_view text) {
    for (bool isFound = true; isFound;) {
        isFound = false;
        for (const std::string_view space : whiteSpace) {
            if (text.starts_with(space)) {
                text.remove_prefix(space.size());
                isFound = true;
            } else if (text.ends_with(space)) {
                text.remove_suffix(space.size());
                isFound = true;
            }
        }
    }
    return text;
}

/// The four fields of a timecode; nothing when it is none.
std::optional<std::vector<Wide>> timecodeFields(std::string_view text) {
    std::string separated(withoutSpace(text));
    for (char& each : separated) {
        if (each == ';') each = ':';
    }
    std::vector<Wide> fields;
    for (const std::string_view piece : pieces(separated, ':')) {
        const auto field = integer(piece);
        if (!field || !isDigit(piece.front())) return std::nullopt;
        fields.push_back(*field);
    }
    const bool isTimecode =
        fields.size() == 4 && fields[0] <= 9999 && fields[1] <= 59 && fields[2] <= 59;
    return isTimecode ? std::optional(fields) : std::nullopt;
}

} // namespace

std::optional<double> oracleSeconds(std::string_view text) {
    if (!text.ends_with('s')) return std::nullopt;
    text.remove_suffix(1);
    const auto terms = pieces(text, '/');
    if (terms.size() > 2) return std::nullopt;
    const auto numerator = decimal(terms[0]);
    const auto denominator = terms.size() == 2 ? decimal(terms[1]) : std::optional(1.0);
    if (!numerator || !denominator || *denominator <= 0) return std::nullopt;
    const double seconds = *numerator / *denominator;
    return std::isfinite(seconds) ? std::optional(seconds) : std::nullopt;
}

std::optional<WideTime> oracleTime(std::string_view text) {
    if (!text.ends_with('s')) return std::nullopt;
    text.remove_suffix(1);
    std::vector<Wide> terms;
    for (const std::string_view piece : pieces(text, '/')) {
        if (piece.empty()) continue;
        const auto term = integer(piece);
        if (!term) return std::nullopt;
        terms.push_back(*term);
    }
    if (terms.empty() || terms.size() > 2) return std::nullopt;
    if (terms.size() == 1) terms.push_back(1);
    return terms[1] > 0 ? std::optional(WideTime{terms[0], terms[1]}) : std::nullopt;
}

FramesOrSentence oracleFrames(std::string_view text, const FrameTerms& frame) {
    const auto time = oracleTime(text);
    if (!time) return {std::nullopt, "Invalid XML time: " + std::string(text)};
    const Wide dividend = time->numerator * frame.denominator;
    const Wide divisor = time->denominator * frame.numerator;
    if (!fits(dividend) || !fits(divisor) || dividend % divisor != 0)
        return {std::nullopt, "This prototype needs timing aligned to the project frame rate."};
    const Wide frames = dividend / divisor;
    if (frames < -999'999'999 || frames > 999'999'999)
        return {std::nullopt, "This time value exceeds the prototype's supported range."};
    return {frames, ""};
}

std::optional<std::string> oracleTimeText(Wide frames, const FrameTerms& frame) {
    const Wide numerator = frames * frame.numerator;
    if (!fits(numerator)) return std::nullopt;
    return decimalText(numerator) + "/" + decimalText(frame.denominator) + "s";
}

Wide oracleRate(const FrameTerms& frame) {
    const Wide rate = frame.denominator / frame.numerator;
    const Wide rest = frame.denominator % frame.numerator;
    const Wide rounded = 2 * rest >= frame.numerator ? rate + 1 : rate;
    return rounded < 1 ? 1 : rounded;
}

bool oracleDrops(const FrameTerms& frame) {
    const Wide rate = oracleRate(frame);
    return (rate == 30 || rate == 60) &&
           Wide{frame.denominator} * 1001 == Wide{frame.numerator} * 1000 * rate;
}

FramesOrSentence oracleTimecode(std::string_view text, const FrameTerms& frame, bool isDropFrame) {
    const auto fields = timecodeFields(text);
    if (!fields) return {std::nullopt, "Enter timecode as HH:MM:SS:FF, for example 00:05:30:00."};
    const Wide rate = oracleRate(frame);
    const Wide frames = (*fields)[3];
    if (frames >= rate)
        return {std::nullopt,
                "The frame field must be less than " + decimalText(rate) + " for this project."};
    const Wide minutes = (*fields)[0] * 60 + (*fields)[1];
    const Wide total = (minutes * 60 + (*fields)[2]) * rate + frames;
    if (!isDropFrame || !oracleDrops(frame)) return {total, ""};

    // Every minute but each tenth begins with so many labels that no frame has.
    const Wide dropped = rate / 15;
    if (minutes % 10 != 0 && (*fields)[2] == 0 && frames < dropped)
        return {std::nullopt, "That frame label is skipped in drop-frame timecode."};
    return {total - dropped * (minutes - minutes / 10), ""};
}

} // namespace shotweaver::fuzz
