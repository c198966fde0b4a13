#pragma once

#include "engine/ImportedProject.h"
#include "engine/import/ReadingBudget.h"
#include "engine/import/Resources.h"
#include "engine/import/XmlAccess.h"
#include "platform/Text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shotweaver {

/// Summarises the angles of a multicam, one after the other.
///
/// Media clips lie directly in an angle, in containers, and in compound clips, which are entered
/// each time they are used, unless their media is being entered further up already.
class AngleImport {
  public:
    /// `resources` must outlive this.
    explicit AngleImport(const Resources& resources) : resources_(resources) {}

    /// Throws `FinalCutImportError` for an angle without an identifier, for a clip's offset that
    /// cannot be read, and for compound clips that lie in each other more than 1,000 elements deep
    /// or multiply beyond the budget of reading, which all angles share.
    ImportedAngle parseAngle(XmlNode angle);

    /// Names of the clips so far whose recording has no location, unique and sorted.
    std::vector<std::string> missingLocations() const { return missingLocations_.sorted(); }

  private:
    struct Clips {
        void add(const Clips& others);

        std::int64_t count = 0;
        std::optional<double> firstRecording; // the smallest offset of any, in seconds
    };

    struct Reading {
        Clips clips;
        std::size_t cost = 0; // of the budget
        int depth = 0;
    };

    /// What has been found of the angle being read.
    struct AngleContent {
        Clips clips;
        std::unordered_map<const Media*, Reading> selfContained;
        TextSet cameras;
        std::unordered_set<const Asset*> seenAssets;
    };

    void read(XmlNode node, int depth);
    const Media* enter(const ClipAttributes& compoundClip);
    void readSequences(const Media& media, int depth);
    void readSelfContained(const Media& media, int depth);
    void readMediaClip(const ClipAttributes& clip);
    void readAsset(const Asset& asset);
    void readMetadata(XmlNode metadata);
    void addMissing(std::string_view name);

    const Resources& resources_;
    ReadingBudget budget_;
    TextSet missingLocations_;
    std::unordered_set<const char*> seenNames_; // added to `missingLocations_`, by their place
    AngleContent angle_;
    std::unordered_set<const Media*> entered_; // on the way from the angle downward
};

} // namespace shotweaver
