#include "persistence/RecordJson.h"

#include "platform/RecordCoding.h"

#include <array>
#include <utility>

namespace shotweaver {

template <RecordOf<SectionDraft> Record, class Visit>
void visitFields(Record& section, Visit visit) {
    visit("id", section.id);
    visit("name", section.name);
    visit("camera", section.camera);
    visit("start", section.start);
    visit("end", section.end);
}

template <RecordOf<EditSettings> Record, class Visit>
void visitFields(Record& settings, Visit visit) {
    visit("mainShare", settings.mainShare);
    visit("averageShot", settings.averageShot);
    visit("mainMinimum", settings.mainMinimum);
    visit("mainMaximum", settings.mainMaximum);
    visit("otherMinimum", settings.otherMinimum);
    visit("otherMaximum", settings.otherMaximum);
    visit("mainCamera", settings.mainCamera);
    visit("otherCameras", settings.otherCameras);
    visit("frequencies", settings.frequencies);
    visit("returnTimes", settings.returnTimes);
    visit("audio", settings.audio);
    visit("doubleMain", settings.doubleMain);
    visit("varyOthers", OrDefault(settings.varyOthers));
    visit("cutAtMarkers", OrDefault(settings.cutAtMarkers));
    visit("followMarkers", OrDefault(settings.followMarkers));
    visit("cutTimes", OrDefault(settings.cutTimes));
    visit("openingEnabled", settings.opening.isEnabled);
    visit("openingCamera", settings.opening.camera);
    visit("openingSeconds", settings.opening.seconds);
    visit("closingEnabled", settings.closing.isEnabled);
    visit("closingCamera", settings.closing.camera);
    visit("closingSeconds", settings.closing.seconds);
    visit("sections", settings.sections);
}

template <RecordOf<Cut> Record, class Visit>
void visitFields(Record& cut, Visit visit) {
    visit("id", cut.id);
    visit("angle", cut.angle);
    visit("start", cut.start);
    visit("duration", cut.duration);
}

template <RecordOf<EditRevision> Record, class Visit>
void visitFields(Record& revision, Visit visit) {
    visit("id", revision.id);
    visit("created", revision.created);
    visit("settings", revision.settings);
    visit("cuts", revision.cuts);
}

template <RecordOf<EditHistory> Record, class Visit>
void visitFields(Record& history, Visit visit) {
    visit("items", history.items);
    visit("index", history.index);
}

namespace {

constexpr std::string_view keptKey = "keptCuts";

template <class Record>
std::string text(const Record& record) {
    std::string json;
    encode(json, record);
    return json;
}

template <class Record>
Record read(const JsonReader& json) {
    Record record;
    decode(json, record);
    return record;
}

} // namespace

std::string settingsText(const EditSettings& settings) {
    return text(settings);
}

EditSettings readSettings(const JsonReader& json) {
    return read<EditSettings>(json);
}

EditSettings readSettingsOver(const JsonReader& json, EditSettings settings) {
    visitFields(settings, [&](std::string_view key, auto&& field) {
        if (json.has(key)) decodeField(json, key, field);
    });
    return settings;
}

std::string revisionText(const EditRevision& revision) {
    return text(revision);
}

EditRevision readRevision(const JsonReader& json) {
    return read<EditRevision>(json);
}

std::string loneRevisionText(const EditRevision& revision, const KeptShots& kept) {
    std::string json = text(revision);
    json.pop_back();
    return json + keptShotsField(kept) + "}";
}

KeptShots readKeptShots(const JsonReader& json) {
    KeptShots kept;
    decodeField(json, keptKey, OrDefault(kept));
    return kept;
}

std::string keptShotsField(const KeptShots& kept) {
    std::string json;
    encodeField(json, keptKey, OrDefault(kept));
    if (json.empty()) return json;
    json.pop_back(); // the comma after it
    return "," + json;
}

EditHistory readHistory(const JsonReader& json) {
    return read<EditHistory>(json);
}

std::optional<Json> parseSession(std::string_view json, std::vector<std::vector<Cut>>& cutLists) {
    static constexpr std::array<std::string_view, 4> path{"history", "items", "[]", "cuts"};
    RecordRows<Cut> rows;
    auto document = parseJson(json, path, rows);
    cutLists = std::move(rows.arrays);
    return document;
}

} // namespace shotweaver
