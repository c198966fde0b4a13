#include "persistence/RecordJson.h"

#include <type_traits>

namespace shotweaver {

namespace {

/// The keys of each record, once for both directions: calls visit(key, field) for every field.
template <class Record, class Visit>
requires std::is_same_v<std::remove_const_t<Record>, SectionDraft>
void visitFields(Record& section, Visit visit) {
    visit("id", section.id);
    visit("name", section.name);
    visit("camera", section.camera);
    visit("start", section.start);
    visit("end", section.end);
}

template <class Record, class Visit>
requires std::is_same_v<std::remove_const_t<Record>, EditSettings>
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
    visit("openingEnabled", settings.openingEnabled);
    visit("openingCamera", settings.openingCamera);
    visit("openingSeconds", settings.openingSeconds);
    visit("closingEnabled", settings.closingEnabled);
    visit("closingCamera", settings.closingCamera);
    visit("closingSeconds", settings.closingSeconds);
    visit("sections", settings.sections);
}

template <class Record, class Visit>
requires std::is_same_v<std::remove_const_t<Record>, Cut>
void visitFields(Record& cut, Visit visit) {
    visit("id", cut.id);
    visit("angle", cut.angle);
    visit("start", cut.start);
    visit("duration", cut.duration);
}

template <class Record, class Visit>
requires std::is_same_v<std::remove_const_t<Record>, EditRevision>
void visitFields(Record& revision, Visit visit) {
    visit("id", revision.id);
    visit("created", revision.created);
    visit("settings", revision.settings);
    visit("cuts", revision.cuts);
}

template <class Record>
OrderedJson encodeRecord(const Record& record);

template <class Value>
OrderedJson encode(const Value& value) {
    if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>)
        return value;
    else
        return encodeRecord(value);
}

OrderedJson encode(const UUID& uuid) {
    return uuid.text();
}

OrderedJson encode(const AngleNumbers& numbers) {
    // Straight into the underlying list: its own insertion looks at every key before.
    OrderedJson::object_t object;
    for (const auto& [angle, number] : numbers)
        object.OrderedJson::object_t::Container::emplace_back(angle, number);
    return object;
}

OrderedJson encode(const std::set<std::string, std::less<>>& angles) {
    OrderedJson array = OrderedJson::array();
    for (const std::string& angle : angles)
        array.push_back(angle);
    return array;
}

template <class Record>
OrderedJson encode(const std::vector<Record>& records) {
    OrderedJson array = OrderedJson::array();
    for (const Record& record : records)
        array.push_back(encodeRecord(record));
    return array;
}

template <class Record>
OrderedJson encodeRecord(const Record& record) {
    OrderedJson object = OrderedJson::object();
    visitFields(record, [&](const char* key, const auto& field) { object[key] = encode(field); });
    return object;
}

template <class Record>
void decodeRecord(const JsonReader& json, Record& record);

void decode(const JsonReader& json, double& value) {
    value = json.number();
}
void decode(const JsonReader& json, std::int64_t& value) {
    value = json.integer();
}
void decode(const JsonReader& json, bool& value) {
    value = json.boolean();
}
void decode(const JsonReader& json, std::string& value) {
    value = json.string();
}
void decode(const JsonReader& json, UUID& value) {
    value = json.uuid();
}
void decode(const JsonReader& json, EditSettings& value) {
    decodeRecord(json, value);
}

void decode(const JsonReader& json, AngleNumbers& value) {
    value.clear();
    for (const auto& [angle, number] : json.members())
        value.insert_or_assign(angle, number.number());
}

void decode(const JsonReader& json, std::set<std::string, std::less<>>& value) {
    value.clear();
    for (const JsonReader& angle : json.elements())
        value.insert(angle.string());
}

template <class Record>
void decode(const JsonReader& json, std::vector<Record>& value) {
    value.clear();
    for (const JsonReader& element : json.elements())
        decodeRecord(element, value.emplace_back());
}

template <class Record>
void decodeRecord(const JsonReader& json, Record& record) {
    visitFields(record, [&](const char* key, auto& field) { decode(json.at(key), field); });
}

} // namespace

OrderedJson settingsJson(const EditSettings& settings) {
    return encodeRecord(settings);
}

EditSettings readSettings(const JsonReader& json) {
    EditSettings settings;
    decodeRecord(json, settings);
    return settings;
}

EditSettings readSettingsOver(const JsonReader& json, EditSettings settings) {
    visitFields(settings, [&](const char* key, auto& field) {
        if (json.has(key)) decode(json.at(key), field);
    });
    return settings;
}

OrderedJson revisionJson(const EditRevision& revision) {
    return encodeRecord(revision);
}

EditRevision readRevision(const JsonReader& json) {
    EditRevision revision;
    decodeRecord(json, revision);
    return revision;
}

} // namespace shotweaver
