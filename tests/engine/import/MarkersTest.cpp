#include "engine/import/Markers.h"
#include "engine/Project.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace shotweaver {
namespace {

/// "120 301 · 0 w Wide, 200 b BAND" of a clip of 1000 frames from frame 50 of its multicam.
std::string markersOf(const std::string& clipContent, const char* frameDuration = "1001/30000s") {
    test::ProjectBuilder project;
    project.frameDuration = frameDuration;
    project.sourceStart = 50;
    project.angles = {{"w", "Wide", {{0, 1050}}},         {"b", " Band", {{0, 1050}}},
                      {"p", "Pulpit", {{0, 1050}}},       {"q", "pulpit", {{0, 1050}}},
                      {"s", "Sound", {{0, 1050}}, false}, {"n", "", {{0, 1050}}}};
    project.clipContent = R"(<mc-source angleID="w" srcEnable="all"/>)" + clipContent;
    const Markers markers = Project(project.xml()).markers;
    std::vector<std::string> notes;
    for (const CameraNote& note : markers.notes)
        notes.push_back(fmt::format("{} {} {}", note.frame, note.angle, note.name));
    return fmt::format("{} · {}{}", fmt::join(markers.cutPoints, " "), fmt::join(notes, ", "),
                       markers.onTitles > 0 ? fmt::format(" · {}", markers.onTitles) : "");
}

TEST(Markers, areReadToTheNearestFrameFromTheClipsStart) {
    // In 1/60000 of a second a frame lasts 2002; 2001/60000 is nearer to 1 than to 0.
    const auto marker = [](std::int64_t sixtieths) {
        return fmt::format(R"(<marker start="{}/60000s"/>)", 50 * 2002 + sixtieths);
    };
    const std::pair<std::string, const char*> rows[] = {
        {marker(2002 * 301) + marker(2002 * 120) + marker(2002 * 120 + 5), "120 301 · "},
        {marker(1001) + marker(1000), "1 · "},
        {marker(999 * 2002 + 1000) + marker(999 * 2002 + 1001), "999 · "}, // 1000 is the end
        {marker(-1) + marker(-1001) + marker(-5000), " · "},
        {R"(<marker start="1/2"/><marker start="abc"/><marker start="4.5s"/><marker value="x"/>)",
         " · "},
        {R"(<marker start="9223372036854775807/9223372036854775806s"/>)", " · "},
        {R"(<marker start="184467440737095516/92233720368547758s"/>)", "10 · "}, // 2 s are 59.94
        {R"(<marker start="9999999999999999999s"/>)", " · "}};
    for (const auto& [content, markers] : rows)
        EXPECT_EQ(markersOf(content), markers) << content;
}

TEST(Markers, namedLikeOneCameraAreNotes) {
    const auto marker = [](int frame, const std::string& attributes) {
        return fmt::format(R"(<marker start="{}/25s" {}/>)", 50 + frame, attributes);
    };
    const std::string title = R"(<title ref="r9" lane="1" offset="2s" duration="1s">)" +
                              marker(5, "") + marker(6, R"(completed="1")") + "</title>";
    const std::pair<std::string, const char*> rows[] = {
        {marker(200, R"(value="BAND&#10;")") + marker(20, R"(value="Pulpit")") +
             marker(0, R"(value="wide")") + marker(200, R"(value="Wide")"),
         "20 · 0 w wide, 200 b BAND, 200 w Wide"},
        {marker(20, R"(value="Sound")") + marker(30, R"(value=" ")") + marker(40, ""),
         "20 30 40 · "},
        // Neither outside, nor another kind of marker.
        {marker(1000, R"(value="Band")") + marker(-1, R"(value="Band")") +
             marker(60, R"(value="Band" completed="0")") + marker(61, R"(completed="1")") +
             R"(<chapter-marker start="3s" value="Band"/>)",
         " · "},
        // Those on titles are told where the clip has none.
        {title + R"(<spine lane="2" offset="3s">)" + title + "</spine>", " ·  · 2"},
        {title + marker(-10, ""), " · "}};
    for (const auto& [content, markers] : rows)
        EXPECT_EQ(markersOf(content, "1/25s"), markers) << content;
}

} // namespace
} // namespace shotweaver
