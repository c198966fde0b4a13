#pragma once

#include "engine/CutEngine.h"

#include <cstdint>
#include <string>
#include <vector>

namespace shotweaver::test {

/// One clip of an angle, in frames of the multicam from its start.
struct ClipSpec {
    std::int64_t offset = 0;
    std::int64_t duration = 0;
};

struct AngleSpec {
    std::string id;
    std::string name = id;
    std::vector<ClipSpec> clips;
    bool hasVideo = true;
    bool hasAudio = true;
};

/// A small valid export, each part of which a test may replace. By default: 25 frames a second,
/// 1000 frames long starting at 00:00:00:00, angles "A" and "B" that cover it all, sound from "A".
struct ProjectBuilder {
    std::string head = R"(<?xml version="1.0" encoding="UTF-8"?><!DOCTYPE fcpxml>)";
    std::string rootAttributes = R"(version="1.11")";
    std::string projectAttributes = R"(name="Sunday" uid="U1" modDate="2025-03-09")";
    std::string frameDuration = "1/25s";
    std::string formatAttributes = R"(width="1920" height="1080")";
    std::string sequenceAttributes; // besides format, duration and tcStart
    std::string multicamAttributes = R"(tcStart="0s")";
    std::string clipAttributes = R"(name="MC")"; // besides ref, offset, start and duration
    std::string clipContent = R"(<mc-source angleID="A" srcEnable="all"/>)";
    std::string extraResources;
    std::string extraAngles;        // whole "mc-angle" elements, after `angles`
    std::int64_t length = 1000;     // frames
    std::int64_t sourceStart = 0;   // frames
    std::int64_t timelineStart = 0; // frames
    std::vector<AngleSpec> angles{{"A", "A", {{0, 1000}}}, {"B", "B", {{0, 1000}}}};

    /// Frames as a time of this project.
    std::string time(std::int64_t frames) const;
    std::string xml() const;
    CutEngine engine() const { return CutEngine(xml()); }
};

std::string repeated(int count, const std::string& text);

/// A "media" element, what a compound clip refers to.
std::string compoundMedia(const std::string& id, const std::string& content);

/// Media "M1" to "M<count>", each of which uses the next one so many times, the last one `end`.
std::string mediaChain(int count, int uses, const std::string& end);

/// The sentence with which a call fails; empty when it succeeds.
template <class Call>
std::string failureOf(Call call) {
    try {
        call();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

/// A media "costly": one clip, which is off and whose name is so long that reading it counts like
/// reading 1,000 elements.
std::string costlyMedia();

/// `text` with its first `from` replaced by `to`; the test is wrong when there is none.
std::string replaced(std::string text, const std::string& from, const std::string& to);

} // namespace shotweaver::test
