#include "persistence/SavedEditSession.h"

#include "engine/FinalCutImportError.h"
#include "engine/generation/EditChecks.h"
#include "persistence/RecordJson.h"
#include "platform/Base64.h"
#include "platform/PlatformError.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace shotweaver {

namespace {

[[noreturn]] void refuse(const char* sentence) {
    throw FinalCutImportError::invalid(sentence);
}

bool camerasMatch(const EditSettings& settings, const CutEngine& engine) {
    const auto isCamera = [&](std::string_view angle) { return !engine.coverageOf(angle).empty(); };
    return isCamera(settings.mainCamera) &&
           std::all_of(settings.otherCameras.begin(), settings.otherCameras.end(), isCamera) &&
           (settings.audio.empty() || engine.audioCoverage.contains(settings.audio)) &&
           std::all_of(settings.sections.begin(), settings.sections.end(),
                       [&](const SectionDraft& section) { return isCamera(section.camera); }) &&
           (!settings.opening.isEnabled || isCamera(settings.opening.camera)) &&
           (!settings.closing.isEnabled || isCamera(settings.closing.camera));
}

void checkSettings(const EditSettings& settings, const CutEngine& engine) {
    settings.validate();
    if (!camerasMatch(settings, engine))
        refuse("The saved session's cameras do not match its XML snapshot.");
}

void checkRevisionCuts(const std::vector<Cut>& cuts, const CutEngine& engine) {
    const CutFault fault = checkCuts(engine, cuts);
    if (fault == CutFault::invalid) refuse("The saved edit history contains invalid cuts.");
    if (fault == CutFault::incomplete) refuse("The saved edit history has an incomplete timeline.");
}

SavedEditSession readDocument(const Json& document) {
    const JsonReader reader(document);
    SavedEditSession session;
    session.version = reader.at("version").integer();
    const JsonReader source = reader.at("sourceXML");
    auto sourceXML = fromBase64(source.string());
    if (!sourceXML) source.refuse("base64 text");
    session.sourceXML = *std::move(sourceXML);
    session.settings = readSettings(reader.at("settings"));
    session.history = readHistory(reader.at("history"));
    session.keptShots = readKeptShots(reader);
    return session;
}

/// What a session starts with as it is written here, before the document.
constexpr std::string_view head = R"({"version":1,"sourceXML":")";

/// Reads a session in the form in which it is written here: what is long in it goes past the parser
/// or does not stay in its document. Nothing for any other text.
std::optional<SavedEditSession> readOwnForm(std::string_view json) {
    if (!json.starts_with(head)) return std::nullopt;
    const std::size_t end = std::min(json.find('"', head.size()), json.size());
    auto sourceXML = fromBase64(json.substr(head.size(), end - head.size()));
    std::vector<std::vector<Cut>> cutLists;
    const auto document = parseSession(std::string(head).append(json.substr(end)), cutLists);
    if (!sourceXML || !document) return std::nullopt;
    SavedEditSession session = readDocument(*document);
    if (cutLists.size() != session.history.items.size()) return std::nullopt;
    session.sourceXML = *std::move(sourceXML);
    for (std::size_t item = 0; item < cutLists.size(); ++item)
        session.history.items[item].cuts = std::move(cutLists[item]);
    return session;
}

} // namespace

SavedEditSession readSession(std::string_view json) {
    try {
        if (auto session = readOwnForm(json)) return *std::move(session);
    } catch (const PlatformError&) {
        // Places counted without the document would be wrong: the whole text says where it is.
    }
    return readDocument(parseJson(json));
}

void validateSession(const SavedEditSession& session, const CutEngine& engine) {
    if (session.version != 1 || !session.history.hasValidIndex())
        refuse("The saved session could not be read. Its stored data has been kept.");
    checkSettings(session.settings, engine);
    for (const EditRevision& revision : session.history.items)
        checkSettings(revision.settings, engine);
    for (const EditRevision& revision : session.history.items) {
        checkAudioCoverage(engine, revision.settings.audio);
        checkRevisionCuts(revision.cuts, engine);
    }
}

void SessionEncoder::write(ByteSink& sink, std::string_view document, const EditSettings& settings,
                           const EditHistory& history, const KeptShots& kept) {
    const std::string settingsJson = settingsText(settings);
    encodeRevisions(history.items);

    sink.write(head);
    sink.write(document);
    sink.write(fmt::format(R"(","settings":{},"history":{{"items":[)", settingsJson));
    for (const EncodedRevision& revision : revisions_)
        sink.write(revision.json);
    sink.write(fmt::format(R"(],"index":{}}}{}}})", history.index, keptShotsField(kept)));
}

void SessionEncoder::encodeRevisions(const std::vector<EditRevision>& items) {
    const auto [changed, kept] = std::mismatch(
        items.begin(), items.end(), revisions_.begin(), revisions_.end(),
        [](const EditRevision& item, const EncodedRevision& known) { return item.id == known.id; });
    revisions_.erase(kept, revisions_.end());
    for (auto item = changed; item != items.end(); ++item)
        revisions_.push_back({item->id, (revisions_.empty() ? "" : ",") + revisionText(*item)});
}

} // namespace shotweaver
