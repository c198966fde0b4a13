#pragma once

#include "platform/JsonReader.h"

#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace shotweaver {

/// How values go into JSON text and come back. A record states its keys once, for both directions:
///
///     template <RecordOf<PresetBookend> Record, class Visit>
///     void visitFields(Record& bookend, Visit visit) {
///         visit("angleName", bookend.angleName);
///         visit("seconds", bookend.seconds);
///     }
///
/// All keys are required when reading, but for those of `std::optional` fields, left out when
/// absent, and of fields in `OrDefault`, left out when at their default; null reads as absent.
/// Unknown keys are ignored.
///
/// The text is compact and is appended to `json`: a session with many cuts is written several times
/// faster than by way of a document. `PlatformError` for a number that is not finite. Decoding
/// throws what `JsonReader` throws.

template <class Record, class Kind>
concept RecordOf = std::same_as<std::remove_const_t<Record>, Kind>;

using StringSet = std::set<std::string, std::less<>>;
using UUIDSet = std::set<UUID>;
template <class Value>
using StringMap = std::map<std::string, Value, std::less<>>;

/// A field whose absent key means the default of its type: visit("keptCuts", OrDefault(ids)).
template <class Value>
struct OrDefault {
    explicit OrDefault(Value& field) : value(field) {}

    Value& value;
};

void encode(std::string& json, double value);
void encode(std::string& json, std::int64_t value);
void encode(std::string& json, bool value);
void encode(std::string& json, const std::string& value);
void encode(std::string& json, const UUID& value);
void encode(std::string& json, const StringSet& value);
void encode(std::string& json, const UUIDSet& value);
template <class Value>
void encode(std::string& json, const StringMap<Value>& value);
template <class Value>
void encode(std::string& json, const std::vector<Value>& value);
template <class Record>
void encode(std::string& json, const Record& record);

void decode(const JsonReader& json, double& value);
void decode(const JsonReader& json, std::int64_t& value);
void decode(const JsonReader& json, bool& value);
void decode(const JsonReader& json, std::string& value);
void decode(const JsonReader& json, UUID& value);
void decode(const JsonReader& json, StringSet& value);
void decode(const JsonReader& json, UUIDSet& value);
template <class Value>
void decode(const JsonReader& json, StringMap<Value>& value);
template <class Value>
void decode(const JsonReader& json, std::vector<Value>& value);
template <class Record>
void decode(const JsonReader& json, Record& record);

/// A number as JSON, for what is only reported: null when it is not finite.
std::string jsonNumber(double value);

/// Ends a list whose entries were each followed by a comma.
void closeList(std::string& json, char bracket);

template <class Value>
void encodeField(std::string& json, std::string_view key, const Value& value) {
    json += '"';
    json += key;
    json += "\":";
    encode(json, value);
    json += ',';
}

template <class Value>
void encodeField(std::string& json, std::string_view key, const std::optional<Value>& value) {
    if (value) encodeField(json, key, *value);
}

template <class Value>
void encodeField(std::string& json, std::string_view key, OrDefault<Value> field) {
    if (field.value != std::remove_const_t<Value>{}) encodeField(json, key, field.value);
}

template <class Value>
void decodeField(const JsonReader& record, std::string_view key, Value& value) {
    decode(record.at(key), value);
}

template <class Value>
void decodeField(const JsonReader& record, std::string_view key, std::optional<Value>& value) {
    value.reset();
    if (const auto found = record.find(key)) decode(*found, value.emplace());
}

template <class Value>
void decodeField(const JsonReader& record, std::string_view key, OrDefault<Value> field) {
    field.value = {};
    if (const auto found = record.find(key)) decode(*found, field.value);
}

/// Reads the rows of long arrays into records of strings, whole numbers and UUIDs, as strictly as
/// `decode`; keys that the record does not have are not taken.
template <class Record>
class RecordRows final : public JsonRows {
  public:
    std::vector<std::vector<Record>> arrays; // in the order of the document

    void beginArray() override { arrays.emplace_back(); }
    void beginRow() override {
        arrays.back().emplace_back();
        seen_ = 0;
    }
    bool key(std::string_view key) override {
        place_ = {};
        std::uint64_t bit = 1;
        visitFields(arrays.back().back(), [&](std::string_view name, auto& field) {
            if (name == key && (seen_ & bit) == 0) {
                place_ = &field;
                seen_ |= bit;
            }
            bit <<= 1U;
        });
        return place_.index() != 0;
    }
    bool string(const std::string& value) override {
        if (auto* const* const text = std::get_if<std::string*>(&place_)) {
            **text = value;
            return true;
        }
        auto* const* const id = std::get_if<UUID*>(&place_);
        const auto parsed = id ? UUID::parse(value) : std::nullopt;
        if (parsed) **id = *parsed;
        return parsed.has_value();
    }
    bool integer(std::int64_t value) override {
        auto* const* const number = std::get_if<std::int64_t*>(&place_);
        if (number) **number = value;
        return number != nullptr;
    }
    bool endRow() override {
        std::uint64_t all = 1;
        visitFields(arrays.back().back(), [&](std::string_view, auto&) { all <<= 1U; });
        return seen_ == all - 1;
    }

  private:
    std::variant<std::monostate, std::string*, std::int64_t*, UUID*> place_;
    std::uint64_t seen_ = 0; // a bit for each field
};

template <class Value>
void encode(std::string& json, const std::vector<Value>& value) {
    json += '[';
    for (const Value& element : value) {
        encode(json, element);
        json += ',';
    }
    closeList(json, ']');
}

template <class Value>
void encode(std::string& json, const StringMap<Value>& value) {
    json += '{';
    for (const auto& [key, entry] : value) {
        encode(json, key);
        json += ':';
        encode(json, entry);
        json += ',';
    }
    closeList(json, '}');
}

template <class Record>
void encode(std::string& json, const Record& record) {
    json += '{';
    visitFields(record,
                [&](std::string_view key, const auto& field) { encodeField(json, key, field); });
    closeList(json, '}');
}

template <class Value>
void decode(const JsonReader& json, std::vector<Value>& value) {
    value.clear();
    json.eachElement([&](const JsonReader& element) { decode(element, value.emplace_back()); });
}

template <class Value>
void decode(const JsonReader& json, StringMap<Value>& value) {
    value.clear();
    json.eachMember(
        [&](const std::string& key, const JsonReader& entry) { decode(entry, value[key]); });
}

template <class Record>
void decode(const JsonReader& json, Record& record) {
    visitFields(record, [&](std::string_view key, auto&& field) { decodeField(json, key, field); });
}

} // namespace shotweaver
