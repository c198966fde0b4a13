#pragma once

#include "engine/import/ReadingBudget.h"
#include "engine/import/Resources.h"
#include "engine/import/XmlAccess.h"

#include <functional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shotweaver {

/// Flattens the content of a multicam angle into the stretches of the angle's timeline in which a
/// recording is present. One walker serves all angles of a document.
class AngleMediaWalker {
  public:
    /// A stretch in seconds of the angle's time, start < end; both flags may be false. Spans come
    /// in no particular order and may overlap.
    struct Span {
        double start = 0;
        double end = 0;
        bool video = false;
        bool audio = false;

        bool operator==(const Span&) const = default;
    };

    using SpanSink = std::function<void(const Span&)>;

    /// `resources` must outlive the walker.
    explicit AngleMediaWalker(const Resources& resources) : resources_(resources) {}

    /// Gives `sink` the spans of an angle's child element, one by one: compound clips can make
    /// millions of them. `camera` names the angle in messages.
    ///
    /// Throws `FinalCutImportError` with the sentence of the first check that fails, in document
    /// order: unknown elements, speed changes, split audio, missing recordings and compound clips,
    /// invalid durations and times, more than 40 levels, more than the budget of reading, which all
    /// elements walked share. What was taken before is then worthless.
    void walk(XmlNode element, std::string_view camera, const SpanSink& sink);

  private:
    struct Window;

    /// What a media's spines hold, in its own time.
    struct Walk {
        std::vector<Span> spans;
        std::size_t cost = 0; // of the budget
        int depth = 0;
    };

    void walkElement(XmlNode element, int depth, const Window* around);
    void walkChildren(XmlNode parent, int depth, const Window& window);
    void walkCompound(XmlNode clip, const Media& media, int depth, const Window& window);
    void walkSpines(const Media& media, int depth, const Window* around);
    const Walk& walkSelfContained(const Media& media, int depth);
    void place(Span span, const Window* window);

    void checkSettings(XmlNode element, const ClipAttributes& attributes) const;
    const Asset& recordingOf(const ClipAttributes& clip) const;
    const Media& mediaOf(const ClipAttributes& compoundClip) const;
    [[noreturn]] void refuse(std::string_view rest) const;

    const Resources& resources_;
    ReadingBudget budget_;
    std::string_view camera_;
    const SpanSink* sink_ = nullptr;
    std::unordered_map<const Media*, Walk> selfContained_;
    std::unordered_set<const Media*> entered_; // on the way from the angle downward
};

} // namespace shotweaver
