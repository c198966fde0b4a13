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

SavedEditSession readAny(std::string_view json) {
    const Json document = parseJson(json);
    const JsonReader reader(document);
    SavedEditSession session;
    session.version = reader.at("version").integer();
    const JsonReader source = reader.at("sourceXML");
    auto sourceXML = fromBase64(source.string());
    if (!sourceXML) source.refuse("base64 text");
    session.sourceXML = *std::move(sourceXML);
    session.settings = readSettings(reader.at("settings"));
    session.history = readHistory(reader.at("history"));
    return session;
}

/// What a session starts with as it is written here, before the document.
constexpr std::string_view head = R"({"version":1,"sourceXML":")";

/// The place of the document's end in a session as it is written here.
std::size_t documentEnd(std::string_view json) {
    return std::min(json.find('"', head.size()), json.size());
}

/// Decodes the document without reading the rest. Nothing when the text is of another form.
std::optional<std::string> readDocument(std::string_view json) {
    if (!json.starts_with(head)) return std::nullopt;
    return fromBase64(json.substr(head.size(), documentEnd(json) - head.size()));
}

/// Decodes all but the document, which costs less than reading it as JSON does.
SavedEditSession readAllButDocument(std::string_view json) {
    try {
        std::string rest(head);
        return readAny(rest += json.substr(documentEnd(json)));
    } catch (const PlatformError&) {
        // Columns counted without the document would be wrong: the whole text says where it is.
        return readAny(json);
    }
}

} // namespace

SavedEditSession readSession(std::string_view json) {
    auto document = readDocument(json);
    if (!document) return readAny(json);
    SavedEditSession session = readAllButDocument(json);
    session.sourceXML = *std::move(document);
    return session;
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

SessionEncoder::SessionEncoder(std::string_view sourceXML) : document_(base64(sourceXML)) {}

std::vector<std::string_view> SessionEncoder::encode(const EditSettings& settings,
                                                     const EditHistory& history) {
    settings_ = fmt::format(R"(","settings":{},"history":{{"items":[)", settingsText(settings));
    encodeRevisions(history.items);
    index_ = fmt::format(R"(],"index":{}}}}})", history.index);

    std::vector<std::string_view> pieces{head, document_, settings_};
    for (const EncodedRevision& revision : revisions_)
        pieces.push_back(revision.json);
    pieces.push_back(index_);
    return pieces;
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
