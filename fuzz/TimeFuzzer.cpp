// Times and timecode against the oracle, and each way back against the way there.

#include "engine/CutEngine.h"
#include "engine/TimeValues.h"
#include "fuzz/Check.h"
#include "fuzz/TimeOracle.h"
#include "tests/support/ProjectBuilder.h"

#include <fmt/format.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>

namespace shotweaver::fuzz {

namespace {

void checkSeconds(const std::string& text) {
    double seconds = 0;
    const auto refusal = refusalOf([&] { seconds = parseSeconds(text); });
    const auto expected = oracleSeconds(text);
    require(refusal.has_value() != expected.has_value(), "seconds are read or refused", text);
    if (expected) {
        require(seconds == *expected, "seconds are the oracle's", text);
        return;
    }
    require(refusal == (text.ends_with('s')
                            ? "The export contains an invalid time value: " + text
                            : "The export contains a missing or invalid time value."),
            "seconds are refused in their words", text);
}

void checkTime(const std::string& text) {
    RationalTime time;
    const auto refusal = refusalOf([&] { time = parseRationalTime(text); });
    const auto expected = oracleTime(text);
    require(refusal.has_value() != expected.has_value(), "a time is read or refused", text);
    require(!expected || (time.numerator == expected->numerator &&
                          time.denominator == expected->denominator),
            "a time is the oracle's", text);
    require(expected || refusal == "Invalid XML time: " + text, "a time is refused in its words",
            text);
}

FrameDuration durationOf(const FrameTerms& frame) {
    return {frame.numerator, frame.denominator};
}

void checkFrames(const std::string& text, const FrameTerms& frame) {
    std::int64_t frames = 0;
    const auto refusal = refusalOf([&] { frames = durationOf(frame).frames(text); });
    const FramesOrSentence expected = oracleFrames(text, frame);
    require(refusal.value_or("") == expected.sentence, "frames are refused as by the oracle", text);
    require(!expected.frames || frames == *expected.frames, "frames are the oracle's", text);
}

void checkTimeText(std::int64_t frames, const FrameTerms& frame) {
    std::optional<std::string> text;
    const auto refusal = refusalOf([&] { text = durationOf(frame).time(frames); });
    require(text == oracleTimeText(frames, frame), "frames are written as the oracle does",
            refusal.value_or(text.value_or("")));
    if (!text) return;
    checkFrames(*text, frame);
    checkSeconds(*text);
}

/// A timecode is right when its fields are in range, its label exists and it names the frame.
void checkTimecodeText(std::int64_t frame, const FrameTerms& terms, DropFrame dropFrame) {
    std::string text = durationOf(terms).timecode(frame, dropFrame);
    const bool drops = dropFrame == DropFrame::yes && oracleDrops(terms);
    require(text.starts_with('-') == (frame < 0), "a timecode has the frame's sign", text);
    if (frame < 0) text.erase(0, 1);
    require((text.find(';') != std::string::npos) == drops, "only drop-frame has a semicolon",
            text);
    const std::string hours = text.substr(0, text.find(':'));
    require(hours.size() == 2 || (hours.size() > 2 && hours.front() != '0'),
            "hours have two digits or as many as they need", text);
    if (hours.size() > 4) return;
    const FramesOrSentence read = oracleTimecode(text, terms, drops);
    const Wide magnitude = frame < 0 ? -Wide{frame} : Wide{frame};
    require(read.frames == magnitude, "a timecode names its frame", text + " " + read.sentence);
}

void checkEngineTimecodes(const CutEngine& engine, const FrameTerms& terms, bool isDropFrame,
                          const std::string& typed, std::int64_t frame) {
    const auto read = [&](const std::string& text) {
        FramesOrSentence result;
        const auto refusal = refusalOf(
            [&] { result.frames = engine.frameForTimecode(text) + engine.timelineStart; });
        result.sentence = refusal.value_or("");
        return result;
    };
    const FramesOrSentence expected = oracleTimecode(typed, terms, isDropFrame);
    const FramesOrSentence result = read(typed);
    require(result.frames == expected.frames && result.sentence == expected.sentence,
            "typed timecode is read as by the oracle", typed + " " + result.sentence);

    const std::string text = engine.timecode(frame);
    if (text.starts_with('-') || text.find(':') > 4) return;
    require(read(text).frames == Wide{frame} + engine.timelineStart, "a timecode reads back", text);
}

FrameTerms frameTerms(FuzzedDataProvider& bytes) {
    constexpr std::int64_t largest = 1'000'000;
    if (bytes.ConsumeBool())
        return {bytes.ConsumeIntegralInRange<std::int64_t>(1, largest),
                bytes.ConsumeIntegralInRange<std::int64_t>(1, largest)};
    constexpr FrameTerms usual[] = {{1001, 30000}, {1001, 60000}, {1, 25},        {1001, 24000},
                                    {2002, 60000}, {100, 2997},   {1, 30},        {1, 60},
                                    {2, 3},        {2, 1},        {7007, 210000}, {1, 1000000}};
    return bytes.PickValueInArray(usual);
}

/// Some bytes as they come, others as four fields of timecode.
std::string typedTimecode(FuzzedDataProvider& bytes) {
    if (bytes.ConsumeBool()) return bytes.ConsumeRandomLengthString(40);
    const auto field = [&] { return bytes.ConsumeIntegralInRange<int>(0, 65); };
    const char separator = bytes.ConsumeBool() ? ';' : ':';
    return fmt::format(" {}:{:02}:{:02}{}{:02}", bytes.ConsumeIntegralInRange(0, 10'001), field(),
                       field(), separator, field());
}

void checkTimecodes(FuzzedDataProvider& bytes, const FrameTerms& terms, bool isDropFrame,
                    std::int64_t frame) {
    test::ProjectBuilder project;
    project.frameDuration = fmt::format("{}/{}s", terms.numerator, terms.denominator);
    project.sequenceAttributes = isDropFrame ? R"(tcFormat="DF")" : R"(tcFormat="NDF")";
    project.timelineStart = bytes.ConsumeIntegralInRange<std::int64_t>(-5'000'000, 5'000'000);
    const std::string typed = typedTimecode(bytes);
    std::optional<CutEngine> engine;
    refusalOf([&] { engine.emplace(project.xml()); });
    if (engine) checkEngineTimecodes(*engine, terms, isDropFrame, typed, frame);
}

/// A frame around the start of a minute, where drop-frame labels are skipped.
std::int64_t frameNearMinute(FuzzedDataProvider& bytes, const FrameTerms& terms) {
    const auto minute = bytes.ConsumeIntegralInRange<std::int64_t>(0, 60 * 30);
    const auto rate = static_cast<std::int64_t>(oracleRate(terms));
    const std::int64_t dropped = oracleDrops(terms) ? rate / 15 : 0;
    return minute * 60 * rate - dropped * (minute - minute / 10) +
           bytes.ConsumeIntegralInRange<std::int64_t>(-3, 3);
}

/// A text made of what times are made of.
std::string composedTime(FuzzedDataProvider& bytes) {
    constexpr const char* parts[] = {"/",  "0",  "1",  "-",  "+",    "7",     "s",
                                     ".5", "e3", "E-", "//", "1001", "30000", "9223372036854775807",
                                     " ",  "e9", "-2", "25", "1e400"};
    std::string text;
    for (int count = bytes.ConsumeIntegralInRange(0, 7); count > 0; --count)
        text += bytes.PickValueInArray(parts);
    return text;
}

void checkTimes(FuzzedDataProvider& bytes) {
    const FrameTerms terms = frameTerms(bytes);
    const bool isDropFrame = bytes.ConsumeBool();
    const auto frame = bytes.ConsumeIntegral<std::int64_t>();
    const auto near = bytes.ConsumeIntegralInRange<std::int64_t>(-2'000'000'000, 2'000'000'000);
    for (const std::int64_t each : {frame, near, frameNearMinute(bytes, terms)}) {
        checkTimeText(each, terms);
        checkTimecodeText(each, terms, isDropFrame ? DropFrame::yes : DropFrame::no);
    }
    require(durationOf(terms).nominalRate() == oracleRate(terms),
            "the nominal rate is the oracle's");

    // An engine costs more than all the rest.
    if (bytes.ConsumeIntegralInRange(0, 7) == 0) checkTimecodes(bytes, terms, isDropFrame, near);

    const std::string composed = composedTime(bytes);
    // As a document's text is: decoded, and without the character that none may hold.
    std::string text = toUTF8(bytes.ConsumeRemainingBytesAsString());
    std::erase(text, '\0');
    for (const std::string& each : {text, text + "s", composed, composed + "s"}) {
        checkSeconds(each);
        checkTime(each);
        checkFrames(each, terms);
    }
}

} // namespace

} // namespace shotweaver::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    shotweaver::fuzz::checkTimes(bytes);
    return 0;
}
