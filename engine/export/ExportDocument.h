#pragma once

#include "engine/CutEngine.h"
#include "engine/EditSettings.h"
#include "engine/export/ClipContents.h"
#include "platform/ByteSink.h"
#include "platform/Uuid.h"
#include "platform/XmlWriter.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// A cut list that passed every check of an export, ready to be written as a new FCPXML project.
/// The cost grows with the input plus the output.
class ExportDocument {
  public:
    /// `audioAngle` is heard throughout; the engine's `audioID` when absent. The engine and the
    /// cuts must outlive this. Throws `FinalCutImportError` with the sentence of the first failed
    /// check.
    ExportDocument(const CutEngine& engine, const std::vector<Cut>& cuts,
                   const std::optional<std::string>& audioAngle, UUIDMaker makeUUID);

    /// Writes the document, UTF-8. Throws what the sink throws.
    void write(ByteSink& sink) const;

  private:
    void writeProject(XmlWriter& writer) const;
    void writeSequence(XmlWriter& writer) const;
    void writeSpine(XmlWriter& writer, XmlNode spine) const;

    const CutEngine& engine_;
    const std::vector<Cut>& cuts_;
    ClipContents contents_;
};

/// The document in memory.
std::string exportDocument(const CutEngine& engine, const std::vector<Cut>& cuts,
                           const std::optional<std::string>& audioAngle, const UUIDMaker& makeUUID);

} // namespace shotweaver
