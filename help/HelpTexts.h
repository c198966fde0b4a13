#pragma once

namespace shotweaver {

/// The sentences that the help view shows as they are.
namespace helpTexts {

inline constexpr const char* title = "Shotweaver Help";
inline constexpr const char* tagline = "Your first pass. Your rules.";
inline constexpr const char* close = "Close";

inline constexpr const char* searchPlaceholder = "Search the manual";
inline constexpr const char* searchAccessibleName = "Search help topics and their contents";
inline constexpr const char* noMatches = "No matching topics";
inline constexpr const char* noMatchesHint =
    "Try a word such as audio, frequency, timecode or export.";
inline constexpr const char* showAll = "Show all";

inline constexpr const char* failed = "Help could not be opened";
inline constexpr const char* visitWebsite = "Visit the Shotweaver website";

} // namespace helpTexts

} // namespace shotweaver
