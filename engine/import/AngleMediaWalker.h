#pragma once

#include "engine/import/RepeatedReading.h"
#include "engine/import/Resources.h"
#include "engine/import/XmlAccess.h"

#include <pugixml.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shotweaver {

/// Flattens the content of a multicam angle into the stretches of the angle's timeline in which a
/// recording is present. One walker serves all angles of a document.
class AngleMediaWalker {
  public:
    /// A stretch in seconds of the parent's time, start < end; both flags may be false. Spans come
    /// in no particular order and may overlap.
    struct Span {
        double start = 0;
        double end = 0;
        bool video = false;
        bool audio = false;

        bool operator==(const Span&) const = default;
    };

    /// `resources` must outlive the walker.
    explicit AngleMediaWalker(const Resources& resources) : resources_(resources) {}

    /// Adds the spans of an angle's child element, in the angle's time. `camera` names the angle in
    /// messages. Throws `FinalCutImportError` with the sentence of the first check that fails, in
    /// document order: unknown elements, speed changes, split audio, missing recordings and
    /// compound clips, invalid durations and times, more than 40 levels.
    void walk(pugi::xml_node element, std::string_view camera, std::vector<Span>& spans);

  private:
    /// What a media holds, in its own time.
    struct MediaContent {
        std::vector<Span> spans;
        int height = 0; // levels of elements
    };

    /// A clip's own times, in seconds; without a known duration nothing is clipped.
    struct Window {
        double offset = 0;
        double start = 0;
        std::optional<double> duration;
    };

    // Each adds spans and gives the levels of elements that it went through.
    int walkElement(pugi::xml_node element, int depth, std::vector<Span>& spans);
    int walkChildren(pugi::xml_node parent, int depth, std::vector<Span>& spans);
    int walkMedia(std::string_view id, const Media& media, int depth, std::vector<Span>& spans);

    Window readWindow(const ClipAttributes& clip) const;
    double durationOf(const Asset& asset);
    void checkSettings(pugi::xml_node element, const ClipAttributes& attributes) const;
    const Asset& recordingOf(pugi::xml_node clip, const ClipAttributes& attributes) const;
    const Media& compoundMedia(const ClipAttributes& clip) const;
    void moveToParent(std::vector<Span>& spans, std::size_t first, const Window& window,
                      std::string_view sources);
    void countWork(std::size_t spans);
    [[noreturn]] void refuse(std::string_view rest) const;
    [[noreturn]] void refuseTooMuch() const;

    const Resources& resources_;
    std::string_view camera_;
    // Compound clips being expanded, by media identifier.
    std::unordered_set<std::string_view> entered_;
    int ownChildrenDepth_ = 0; // compound clips among whose own children the walk is
    // What a media holds depends on that media alone, so it is walked once. Only among a compound
    // clip's own children may it come back to a media being expanded, and is walked anew.
    std::unordered_map<std::string_view, MediaContent> known_;
    std::unordered_map<const Asset*, double> durations_; // seconds
    RepeatedReading reading_;
    std::size_t work_ = 0;
};

} // namespace shotweaver
