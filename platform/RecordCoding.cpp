#include "platform/RecordCoding.h"

#include "platform/NumberText.h"
#include "platform/PlatformError.h"

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

/// True for text that stands in JSON as it is.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; });
}

template <class Set>
void encodeElements(std::string& json, const Set& set) {
    json += '[';
    for (const auto& element : set) {
        encode(json, element);
        json += ',';
    }
    closeList(json, ']');
}

} // namespace

void closeList(std::string& json, char bracket) {
    if (json.back() == ',')
        json.back() = bracket;
    else
        json += bracket;
}

std::string jsonNumber(double value) {
    return Json(value).dump();
}

void encode(std::string& json, double value) {
    if (!std::isfinite(value)) throw PlatformError("A number that is not finite cannot be stored.");
    json += shortestDecimal(value);
}

void encode(std::string& json, std::int64_t value) {
    json += std::to_string(value);
}

void encode(std::string& json, bool value) {
    json += value ? "true" : "false";
}

void encode(std::string& json, const std::string& value) {
    if (!isPlain(value)) {
        json += Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
        return;
    }
    json += '"';
    json += value;
    json += '"';
}

void encode(std::string& json, const UUID& value) {
    encode(json, value.text());
}

void encode(std::string& json, const StringSet& value) {
    encodeElements(json, value);
}

void encode(std::string& json, const UUIDSet& value) {
    encodeElements(json, value);
}

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

void decode(const JsonReader& json, StringSet& value) {
    value.clear();
    json.eachElement([&](const JsonReader& angle) { value.insert(angle.string()); });
}

void decode(const JsonReader& json, UUIDSet& value) {
    value.clear();
    json.eachElement([&](const JsonReader& id) { value.insert(id.uuid()); });
}

} // namespace shotweaver
