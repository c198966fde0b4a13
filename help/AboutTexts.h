#pragma once

#include <optional>
#include <string>

namespace shotweaver {

/// The product's web page.
inline constexpr const char* productPage = "https://shotweaver.example/";

/// "Version 0.1 (Beta) (Build 1)". The numbers are the build's own description of itself; one that
/// it lacks, or that is not text there, is absent here and is "0.1" or "1".
std::string versionText(const std::optional<std::string>& version,
                        const std::optional<std::string>& build);

/// The sentences that the about view shows as they are.
namespace aboutTexts {

inline constexpr const char* productName = "Shotweaver";
inline constexpr const char* purpose =
    "Shotweaver creates an editable first pass of your Final Cut Pro multicam project, using your "
    "camera preferences and shot lengths.";
inline constexpr const char* website = "Shotweaver website";
inline constexpr const char* invitation =
    "Visit the website to make an optional contribution or share feedback.";
inline constexpr const char* contributions =
    "Contributions support development and do not include additional support. Personalised "
    "training and response times are not guaranteed.";
inline constexpr const char* openManual = "Open manual";
inline constexpr const char* close = "Close";

} // namespace aboutTexts

} // namespace shotweaver
