#include "persistence/EditPreset.h"
#include "tests/persistence/Damage.h"
#include "tests/support/ProjectBuilder.h"

#include <cmath>

namespace shotweaver::test {
namespace {

/// As stored before there were ranges, frequencies and return times.
const EditPreset oldPreset{
    UUID(), "Sunday", 60, 8,  true, false, false, false, "Cam 1", {"Cam 2", ""},
    "Mix",  {},       {}, {}, {},   {},    {},    {},    {}};

EditPreset fullPreset() {
    EditPreset preset = oldPreset;
    preset.varyOthers = preset.cutAtMarkers = preset.followMarkers = true;
    preset.returnTimes = {{"Cam 2", 30}};
    preset.frequencies = {{"Cam 1", 7.5}};
    preset.opening = {"Cam 3", 15};
    preset.closing = {"Cam 4", 16};
    std::tie(preset.mainMinimum, preset.mainMaximum) = std::pair(7, 12);
    std::tie(preset.otherMinimum, preset.otherMaximum) = std::pair(4, 8.5);
    return preset;
}
const EditPreset preset = fullPreset();

const std::string oldStored =
    R"([{"id":"00000000-0000-0000-0000-000000000000","name":"Sunday","mainShare":60.0,)"
    R"("averageShot":8.0,"doubleMain":true,"mainAngleName":"Cam 1",)"
    R"("otherAngleNames":["Cam 2",""],"audioAngleName":"Mix"}])";
const std::string stored =
    replaced(oldStored.substr(0, oldStored.size() - 2), R"("doubleMain":true)",
             R"("doubleMain":true,"varyOthers":true,"cutAtMarkers":true,"followMarkers":true)") +
    R"(,"returnTimes":[{"angleName":"Cam 2","seconds":30.0}],)"
    R"("frequencies":[{"angleName":"Cam 1","weight":7.5}],)"
    R"("opening":{"angleName":"Cam 3","seconds":15.0},)"
    R"("closing":{"angleName":"Cam 4","seconds":16.0},)"
    R"("mainMinimum":7.0,"mainMaximum":12.0,"otherMinimum":4.0,"otherMaximum":8.5}])";
const std::string refused =
    "The saved presets could not be read. Your existing saved data has been kept.";

TEST(EditPreset, whatIsStoredIsWhatIsLoaded) {
    EXPECT_EQ(encodePresets({preset}), stored);
    EXPECT_EQ(loadPresets(stored), std::vector{preset});
    EXPECT_EQ(encodePresets({oldPreset}), oldStored);
    EXPECT_EQ(loadPresets(oldStored), std::vector{oldPreset});
    EXPECT_EQ(loadPresets("").size(), 0U);
    EXPECT_EQ(loadPresets(encodePresets({})).size(), 0U);

    EditPreset other = oldPreset;
    other.returnTimes.emplace(); // empty is not absent
    EXPECT_EQ(loadPresets(encodePresets({other})), std::vector{other});
    other.id.bytes.back() = 1;
    const auto failure = [&] { return failureOf([&] { encodePresets({preset, other}); }); };
    EXPECT_EQ(failure(), refused); // the same name
    other.name = "\n SUNDAY\u2003";
    EXPECT_EQ(failure(), refused);
    other.name = "Sunday 2";
    EXPECT_EQ(failure(), "");
    other.id = preset.id;
    EXPECT_EQ(failure(), refused);
    other.mainMinimum = NAN;
    EXPECT_EQ(failure(), "A number that is not finite cannot be stored.");
}

TEST(EditPreset, aChangedTextIsReadOrRefusedWhole) {
    for (const auto& [from, to, failure] : changes({
             {"60.0|10;60.0|90;8.0|4;8.0|20;30.0|0;30.0|600;7.5|1;7.5|10;15.0|1;15.0|120", ""},
             {"7.0|1;7.0|12;12.0|120;4.0|1;4.0|8.5;8.5|120;Mix| ;Cam 1\",\"o|\",\"o", ""},
             {R"({"angleName":"Cam 3","seconds":15.0}|null;"id"|"x":[null],"id")", ""},
             {"60.0|9.9;60.0|90.1;8.0|3.9;8.0|20.1;30.0|-0.1;30.0|600.1;7.5|0.9;7.5|10.1", refused},
             {"15.0|0.9;15.0|120.1;16.0|0.9;16.0|120.1;7.0|0.9;7.0|12.1;12.0|120.1", refused},
             {"4.0|0.9;4.0|8.6;8.5|120.1;7.0|null;12.0|null;4.0|null;8.5|null", refused},
             {"Sunday|\u2003\\n;Cam 3|;Cam 4| ;Cam 2\",\"s|\",\"s;Cam 1\",\"w|\",\"w", refused},
             {R"("name"|"title")", "The JSON has no \"[0].name\"."},
             {R"("seconds":30|"s":30)", "The JSON has no \"[0].returnTimes[0].seconds\"."},
             {R"("weight"|"w")", "The JSON has no \"[0].frequencies[0].weight\"."},
             {R"("seconds":15|"s":15)", "The JSON has no \"[0].opening.seconds\"."},
             {R"("Cam 2",""|"",null)", "The JSON's \"[0].otherAngleNames[1]\" must be a string."},
             // Everything is read before a rule is looked at.
             {R"(Sunday","mainShare":60.0|","mainShare":"")",
              "The JSON's \"[0].mainShare\" must be a number."},
         })) {
        const std::string text = replaced(stored, from, to);
        EXPECT_EQ(failureOf([&] { loadPresets(text); }), failure) << from << " to " << to;
    }
    EXPECT_EQ(failureOf([] { loadPresets("{}"); }), "The JSON must be an array.");
}

TEST(EditPreset, damageOfAnyByteIsReadOrRefused) {
    expectDamageIsReadOrRefused(stored, [](const auto& damaged) { loadPresets(damaged); });
}

} // namespace
} // namespace shotweaver::test
