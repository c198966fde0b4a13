#include "persistence/AngleNames.h"

#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

ImportedAngle angle(const std::string& id, const std::string& name) {
    ImportedAngle angle;
    angle.id = id;
    angle.name = name;
    return angle;
}

TEST(AngleNames, oneAngleOfThatNameIsFound) {
    const std::vector<ImportedAngle> angles{
        angle("1", "Cam 1"), angle("2", "cam 1 "), angle("3", " Wide\n"),   angle("4", "ÉGLISE"),
        angle("5", ""),      angle("6", "Cam  2"), angle("7", "Straße Süd")};
    const struct {
        const char* label;
        const char* name;
        std::optional<std::string> id;
    } rows[] = {
        {"as written", "Cam  2", "6"},
        {"in another case", "wIDE", "3"},
        {"between line breaks and no-break spaces", "\r\n\u00A0wide\u2003\t", "3"},
        {"capitals beyond ASCII", "église", "4"},
        {"the same letter in two characters", "E\u0301glise", "4"},
        {"capitals are not what lower case is compared by", "STRASSE SÜD", std::nullopt},
        {"white space inside counts", "Cam 2", std::nullopt},
        {"two have it", "CAM 1", std::nullopt},
        {"an identifier is no name", "3", std::nullopt},
        {"a part of a name", "Wid", std::nullopt},
        {"nothing but white space is the empty name", " ", "5"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(findAngle(row.name, angles), row.id) << row.label;
    EXPECT_EQ(findAngle("", {}), std::nullopt);
}

} // namespace
} // namespace shotweaver::test
