#include "persistence/JsonReader.h"

#include "platform/PlatformError.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <set>

namespace shotweaver {

namespace {

constexpr int maximumDepth = 64;

/// What the parser says without its own prefix: "[json.exception.parse_error.101] parse error at
/// line 1, column 2: …" becomes "parse error at line 1, column 2: …".
std::string_view parserText(const Json::exception& error) {
    const std::string_view text = error.what();
    const std::size_t prefix = text.find("] ");
    return prefix == std::string_view::npos ? text : text.substr(prefix + 2);
}

/// Follows the parse and refuses what the parser itself lets pass.
class ParseWatch {
  public:
    bool operator()(int depth, Json::parse_event_t event, const Json& parsed) {
        if (depth > maximumDepth)
            throw PlatformError(
                fmt::format("The JSON is nested more than {} levels deep.", maximumDepth));
        switch (event) {
        case Json::parse_event_t::object_start:
            keys_.emplace_back();
            break;
        case Json::parse_event_t::object_end:
            keys_.pop_back();
            break;
        case Json::parse_event_t::key:
            addKey(parsed.get_ref<const std::string&>());
            break;
        default:
            break;
        }
        return true;
    }

  private:
    void addKey(const std::string& key) {
        if (!keys_.back().insert(key).second)
            throw PlatformError(fmt::format("The JSON has the key \"{}\" twice.", key));
    }

    std::vector<std::set<std::string>> keys_;
};

} // namespace

Json parseJson(std::string_view text) {
    ParseWatch watch;
    try {
        return Json::parse(text, [&](int depth, Json::parse_event_t event, Json& parsed) {
            return watch(depth, event, parsed);
        });
    } catch (const Json::exception& error) {
        throw PlatformError(fmt::format("The JSON could not be read: {}.", parserText(error)));
    }
}

void JsonReader::refuse(std::string_view expectation) const {
    throw PlatformError(path_.empty()
                            ? fmt::format("The JSON must be {}.", expectation)
                            : fmt::format("The JSON's \"{}\" must be {}.", path_, expectation));
}

double JsonReader::number() const {
    if (!value_.is_number()) refuse("a number");
    return value_.get<double>();
}

std::int64_t JsonReader::integer() const {
    const bool fits = value_.is_number_integer() &&
                      (!value_.is_number_unsigned() ||
                       value_.get<std::uint64_t>() <=
                           static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()));
    if (!fits) refuse("a whole number of at most 64 bits");
    return value_.get<std::int64_t>();
}

bool JsonReader::boolean() const {
    if (!value_.is_boolean()) refuse("true or false");
    return value_.get<bool>();
}

std::string JsonReader::string() const {
    if (!value_.is_string()) refuse("a string");
    return value_.get<std::string>();
}

UUID JsonReader::uuid() const {
    const auto uuid =
        value_.is_string() ? UUID::parse(value_.get_ref<const std::string&>()) : std::nullopt;
    if (!uuid) refuse("a UUID of 36 characters");
    return *uuid;
}

std::vector<JsonReader> JsonReader::elements() const {
    if (!value_.is_array()) refuse("an array");
    std::vector<JsonReader> elements;
    elements.reserve(value_.size());
    for (const Json& element : value_)
        elements.push_back(JsonReader(element, fmt::format("{}[{}]", path_, elements.size())));
    return elements;
}

std::vector<std::pair<std::string, JsonReader>> JsonReader::members() const {
    std::vector<std::pair<std::string, JsonReader>> members;
    for (const auto& [key, value] : object().items())
        members.emplace_back(key, JsonReader(value, memberPath(key)));
    return members;
}

JsonReader JsonReader::at(std::string_view key) const {
    const auto found = object().find(key);
    if (found == value_.end())
        throw PlatformError(fmt::format("The JSON has no \"{}\".", memberPath(key)));
    return JsonReader(*found, memberPath(key));
}

bool JsonReader::has(std::string_view key) const {
    const auto found = object().find(key);
    return found != value_.end() && !found->is_null();
}

const Json& JsonReader::object() const {
    if (!value_.is_object()) refuse("an object");
    return value_;
}

std::string JsonReader::memberPath(std::string_view key) const {
    return path_.empty() ? std::string(key) : fmt::format("{}.{}", path_, key);
}

} // namespace shotweaver
