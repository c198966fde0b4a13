#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "persistence/EditHistory.h"
#include "platform/ByteSink.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// The user's work as it is kept across launches.
struct SavedEditSession {
    std::int64_t version = 1; // of the format
    std::string sourceXML;    // the imported document, byte for byte
    EditSettings settings;    // in the panels, not those of the current revision
    EditHistory history;
    KeptShots keptShots = {};

    bool operator==(const SavedEditSession&) const = default;
};

/// Decodes a session file. Only its form is checked: see `validateSession`. Throws `PlatformError`
/// with a sentence that says where.
SavedEditSession readSession(std::string_view json);

/// Checks a decoded session against the engine built from its XML. Throws `FinalCutImportError`
/// with the sentence of the first failed check: version and index; for the settings and then each
/// revision's the ranges and the cameras; for each revision the audio angle and the cuts.
void validateSession(const SavedEditSession& session, const CutEngine& engine);

/// Writes sessions of one project, saved again and again: each revision is encoded when it is first
/// saved.
class SessionEncoder {
  public:
    /// Writes the file's text. `document` is the imported XML in base64, which is what an editor
    /// keeps of it: encoding it for every save would double the time of one. Between calls
    /// `history` may only grow by `append` and move its index: revisions never change. Throws what
    /// the sink throws, and `PlatformError` for a number that is not finite, before anything is
    /// written.
    void write(ByteSink& sink, std::string_view document, const EditSettings& settings,
               const EditHistory& history, const KeptShots& kept);

  private:
    struct EncodedRevision {
        UUID id;
        std::string json; // with the comma before it, but for the first one
    };

    void encodeRevisions(const std::vector<EditRevision>& items);

    std::vector<EncodedRevision> revisions_;
};

} // namespace shotweaver
