#include "persistence/JsonReader.h"

#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <set>

namespace shotweaver {

namespace {

constexpr std::size_t maximumDepth = 64;
constexpr std::size_t shownCharacters = 200;

/// What the parser says without its own prefix: "[json.exception.parse_error.101] parse error at
/// line 1, column 2: …" becomes "parse error at line 1, column 2: …".
std::string_view parserText(const Json::exception& error) {
    const std::string_view text = error.what();
    const std::size_t prefix = text.find("] ");
    return firstCharacters(prefix == std::string_view::npos ? text : text.substr(prefix + 2),
                           shownCharacters);
}

/// Goes through a document before it is read, and refuses what the library lets pass. Of its events
/// only those of objects and arrays matter.
class StrictWatch final : public nlohmann::json_sax<Json> {
  public:
    explicit StrictWatch(std::string_view text) : text_(text) {}

    bool start_object(std::size_t) override { return open(); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(); }
    bool end_array() override { return close(); }

    bool key(std::string& key) override {
        if (!keys_.back().insert(key).second)
            throw PlatformError(fmt::format("The JSON has the key \"{}\" twice in one object.",
                                            firstCharacters(key, shownCharacters)));
        return true;
    }

    bool parse_error(std::size_t position, const std::string&,
                     const Json::exception& error) override {
        // Only syntax errors say where they are.
        const auto line = std::count(text_.begin(), text_.begin() + offset(position), '\n') + 1;
        const std::string_view what = parserText(error);
        throw PlatformError(
            what.find("at line") != std::string_view::npos
                ? fmt::format("The JSON could not be read: {}.", what)
                : fmt::format("The JSON could not be read at line {}: {}.", line, what));
    }

    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(Json::number_integer_t) override { return true; }
    bool number_unsigned(Json::number_unsigned_t) override { return true; }
    bool number_float(Json::number_float_t, const std::string&) override { return true; }
    bool string(std::string&) override { return true; }
    bool binary(Json::binary_t&) override { return true; }

  private:
    bool open() {
        keys_.emplace_back();
        if (keys_.size() > maximumDepth)
            throw PlatformError(
                fmt::format("The JSON is nested more than {} levels deep.", maximumDepth));
        return true;
    }

    bool close() {
        keys_.pop_back();
        return true;
    }

    std::ptrdiff_t offset(std::size_t position) const {
        return static_cast<std::ptrdiff_t>(std::min(position, text_.size()));
    }

    std::string_view text_;
    std::vector<std::set<std::string>> keys_; // of each object or array that is open
};

} // namespace

Json parseJson(std::string_view text) {
    StrictWatch watch(text);
    Json::sax_parse(text, &watch);
    return Json::parse(text);
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
