#include "engine/generation/FixedParts.h"

#include "engine/FinalCutImportError.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

using Kind = FixedPart::Kind;

/// The first of parts in order, none of which overlap, that shares a frame with another.
FixedPart* overlapping(std::vector<FixedPart>& parts, const FixedPart& other) {
    const auto found = std::partition_point(
        parts.begin(), parts.end(), [&](const FixedPart& each) { return each.end <= other.start; });
    return found != parts.end() && found->start < other.end ? &*found : nullptr;
}

const char* nameOf(Kind kind) {
    switch (kind) {
    case Kind::opening:
        return "the opening shot";
    case Kind::closing:
        return "the closing shot";
    case Kind::section:
        return "a fixed section";
    case Kind::kept:
        return "another kept shot";
    case Kind::note:
        break; // notes come after all else
    }
    return "";
}

[[noreturn]] void refuse(const CutEngine& engine, const Cut& kept, std::string_view rest) {
    const std::int64_t start = std::clamp<std::int64_t>(kept.start, 0, engine.length);
    throw FinalCutImportError::invalid(
        fmt::format("The kept shot at {} {}", engine.timecode(start), rest));
}

FixedPart partOf(const CutEngine& engine, const Cut& kept) {
    const bool isInside = kept.start >= 0 && kept.start <= engine.length && kept.duration >= 1 &&
                          kept.duration <= engine.length - kept.start;
    if (!isInside ||
        !rangeContaining(engine.coverageOf(kept.angle), {kept.start, kept.start + kept.duration}))
        refuse(engine, kept, "has missing footage. Let go of it or choose another camera.");
    return {Kind::kept, kept.angle, kept.start, kept.start + kept.duration, kept.id};
}

std::vector<FixedPart> partsOf(const BookendFrames& bookends,
                               const std::optional<BookendShot>& opening,
                               const std::optional<BookendShot>& closing, std::int64_t length) {
    std::vector<FixedPart> parts;
    if (opening) parts.push_back({Kind::opening, opening->angle, 0, bookends.opening, {}});
    if (closing)
        parts.push_back({Kind::closing, closing->angle, bookends.closingStart, length, {}});
    return parts;
}

std::vector<FixedPart> partsOf(const std::vector<FixedCameraSection>& sections) {
    std::vector<FixedPart> parts;
    parts.reserve(sections.size());
    for (const FixedCameraSection& section : sections)
        parts.push_back({Kind::section, section.angle, section.start, section.end, {}});
    return parts;
}

FixedPart partOf(const CutEngine& engine, const CameraNote& note) {
    const FrameRange* const footage =
        rangeContaining(engine.coverageOf(note.angle), {note.frame, note.frame + 1});
    if (!footage)
        throw FinalCutImportError::invalid(
            fmt::format("The marker “{}” at {} asks for a camera without footage there.", note.name,
                        engine.timecode(note.frame)));
    return {Kind::note, note.angle, note.frame, footage->upperBound, {}};
}

} // namespace

bool isPlaceOf(const Cut& cut, const FixedPart& part) {
    return cut.angle == part.angle && cut.start == part.start &&
           cut.start + cut.duration == part.end;
}

std::vector<FixedPart> fixedParts(const CutEngine& engine, const BookendFrames& bookends,
                                  const std::optional<BookendShot>& opening,
                                  const std::optional<BookendShot>& closing,
                                  const std::vector<FixedCameraSection>& sections,
                                  std::vector<Cut> kept) {
    std::vector<FixedPart> bookendParts = partsOf(bookends, opening, closing, engine.length);
    std::vector<FixedPart> sectionParts = partsOf(sections);
    std::vector<FixedPart> keptParts;

    std::stable_sort(kept.begin(), kept.end(),
                     [](const Cut& a, const Cut& b) { return a.start < b.start; });
    for (const Cut& cut : kept) {
        const FixedPart part = partOf(engine, cut);
        FixedPart* met = nullptr;
        for (std::vector<FixedPart>* const group : {&bookendParts, &sectionParts, &keptParts})
            if (!met) met = overlapping(*group, part);
        if (!met)
            keptParts.push_back(part);
        else if (isPlaceOf(cut, *met) && !met->keptID)
            met->keptID = cut.id;
        else
            refuse(
                engine, cut,
                fmt::format("overlaps {}. Let go of it or change one of them.", nameOf(met->kind)));
    }

    std::vector<FixedPart> parts = std::move(bookendParts);
    parts.insert(parts.end(), sectionParts.begin(), sectionParts.end());
    parts.insert(parts.end(), keptParts.begin(), keptParts.end());
    std::stable_sort(parts.begin(), parts.end(),
                     [](const FixedPart& a, const FixedPart& b) { return a.start < b.start; });
    return parts;
}

std::vector<FixedPart> withNotes(const CutEngine& engine, const std::vector<FixedPart>& parts,
                                 const std::vector<CameraNote>& notes) {
    std::vector<FixedPart> all;
    all.reserve(parts.size() + notes.size());
    // Each shot of a note ends at the latest where the next part begins.
    const auto add = [&](const FixedPart& part) {
        if (!all.empty()) all.back().end = std::min(all.back().end, part.start);
        all.push_back(part);
    };
    auto part = parts.begin();
    for (const CameraNote& note : notes) {
        for (; part != parts.end() && part->start <= note.frame; ++part)
            add(*part);
        const bool isPassedOver =
            !all.empty() && (all.back().start == note.frame ||
                             (all.back().kind != Kind::note && note.frame < all.back().end));
        if (!isPassedOver) add(partOf(engine, note));
    }
    for (; part != parts.end(); ++part)
        add(*part);
    return all;
}

} // namespace shotweaver
