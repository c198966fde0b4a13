#include "platform/JsonReader.h"

#include "platform/NumberText.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace shotweaver {

namespace {

constexpr std::size_t maximumDepth = 64;
constexpr std::size_t shownCharacters = 200;

/// What the parser says without its own prefix: "[json.exception.parse_error.101] parse error at
/// line 1, column 2: …" becomes "parse error at line 1, column 2: …".
/// The bytes that it repeats need not be text.
std::string parserText(const Json::exception& error) {
    const std::string_view text = error.what();
    const std::size_t prefix = text.find("] ");
    return toUTF8(firstCharacters(prefix == std::string_view::npos ? text : text.substr(prefix + 2),
                                  shownCharacters));
}

/// Builds a document from the events of the parser, and refuses what the library lets pass.
class StrictBuilder final : public nlohmann::json_sax<Json> {
  public:
    explicit StrictBuilder(std::string_view text) : text_(text) {}
    StrictBuilder(std::string_view text, std::span<const std::string_view> path, JsonRows& rows)
        : text_(text), path_(path), rows_(&rows) {}

    Json take() { return std::move(root_); }

    bool start_object(std::size_t) override {
        if (!inRows_) return open(Json::object());
        if (inRow_) return false;
        inRow_ = true;
        rows_->beginRow();
        return true;
    }
    bool end_object() override {
        if (!inRows_) return close();
        inRow_ = false;
        return rows_->endRow();
    }
    bool start_array(std::size_t) override {
        if (inRows_) return false;
        inRows_ = rows_ && isAtRows();
        if (inRows_) rows_->beginArray();
        return open(Json::array());
    }
    bool end_array() override {
        inRows_ = false;
        return close();
    }

    bool key(std::string& key) override {
        if (inRows_) return rows_->key(key);
        auto& object = open_.back()->get_ref<Json::object_t&>();
        const auto [member, isNew] = object.try_emplace(std::move(key));
        if (!isNew)
            throw PlatformError(fmt::format("The JSON has the key \"{}\" twice in one object.",
                                            firstCharacters(member->first, shownCharacters)));
        member_ = &*member;
        return true;
    }

    bool null() override { return !inRows_ && add(nullptr); }
    bool boolean(bool value) override { return !inRows_ && add(value); }
    bool number_integer(Json::number_integer_t value) override {
        return inRows_ ? inRow_ && rows_->integer(value) : add(value);
    }
    bool number_unsigned(Json::number_unsigned_t value) override {
        if (!inRows_) return add(value);
        return inRow_ && std::in_range<std::int64_t>(value) &&
               rows_->integer(static_cast<std::int64_t>(value));
    }
    bool number_float(Json::number_float_t value, const std::string&) override {
        return !inRows_ && add(value);
    }
    bool string(std::string& value) override {
        return inRows_ ? inRow_ && rows_->string(value) : add(std::move(value));
    }
    bool binary(Json::binary_t&) override { return false; } // not in a text

    bool parse_error(std::size_t position, const std::string&,
                     const Json::exception& error) override {
        // Only syntax errors say where they are.
        const auto line = std::count(text_.begin(), text_.begin() + offset(position), '\n') + 1;
        const std::string what = parserText(error);
        throw PlatformError(
            what.find("at line") != std::string::npos
                ? fmt::format("The JSON could not be read: {}.", what)
                : fmt::format("The JSON could not be read at line {}: {}.", line, what));
    }

  private:
    /// Puts a value in the place that the events before have led to.
    Json& put(Json value) {
        if (open_.empty()) return root_ = std::move(value);
        if (open_.back()->is_object()) return member_->second = std::move(value);
        return open_.back()->get_ref<Json::array_t&>().emplace_back(std::move(value));
    }

    bool add(Json value) {
        put(std::move(value));
        return true;
    }

    bool open(Json container) {
        if (open_.size() == maximumDepth)
            throw PlatformError(
                fmt::format("The JSON is nested more than {} levels deep.", maximumDepth));
        open_.push_back(&put(std::move(container)));
        return true;
    }

    bool close() {
        open_.pop_back();
        return true;
    }

    /// True when the value that comes next lies at the path of the rows.
    bool isAtRows() const {
        if (open_.size() != path_.size() || !open_.back()->is_object() ||
            member_->first != path_.back())
            return false;
        const Json* value = &root_;
        for (std::size_t level = 0; level + 1 < path_.size(); ++level) {
            if (value->is_array()) {
                if (path_[level] != "[]") return false;
                value = &value->back();
            } else {
                const auto found = value->find(path_[level]);
                if (found == value->end()) return false;
                value = &*found;
            }
            if (value != open_[level + 1]) return false;
        }
        return true;
    }

    std::ptrdiff_t offset(std::size_t position) const {
        return static_cast<std::ptrdiff_t>(std::min(position, text_.size()));
    }

    std::string_view text_;
    std::span<const std::string_view> path_;
    JsonRows* rows_ = nullptr;
    bool inRows_ = false; // in one of their arrays
    bool inRow_ = false;
    Json root_;
    std::vector<Json*> open_; // outermost first; each stays in place until it is closed
    Json::object_t::value_type* member_ =
        nullptr; // of the innermost object: the key that came last
};

bool parse(std::string_view text, StrictBuilder& builder) {
    bool isWhole = false;
    // The library reads numbers with the locale's decimal mark, and ends the program over one of
    // several bytes.
    withPlainNumbers([&] { isWhole = Json::sax_parse(text, &builder); });
    return isWhole;
}

} // namespace

Json parseJson(std::string_view text) {
    StrictBuilder builder(text);
    parse(text, builder);
    return builder.take();
}

std::optional<Json> parseJson(std::string_view text, std::span<const std::string_view> path,
                              JsonRows& rows) {
    StrictBuilder builder(text, path, rows);
    if (!parse(text, builder)) return std::nullopt;
    return builder.take();
}

void JsonReader::refuse(std::string_view expectation) const {
    throw PlatformError(parent_ == nullptr
                            ? fmt::format("The JSON must be {}.", expectation)
                            : fmt::format("The JSON's \"{}\" must be {}.", path(), expectation));
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

const std::string& JsonReader::string() const {
    if (!value_.is_string()) refuse("a string");
    return value_.get_ref<const std::string&>();
}

UUID JsonReader::uuid() const {
    const auto uuid =
        value_.is_string() ? UUID::parse(value_.get_ref<const std::string&>()) : std::nullopt;
    if (!uuid) refuse("a UUID of 36 characters");
    return *uuid;
}

JsonReader JsonReader::at(std::string_view key) const& {
    const auto found = object().find(key);
    if (found == object().end())
        throw PlatformError(fmt::format("The JSON has no \"{}\".", memberPath(key)));
    return JsonReader(found->second, *this, found->first, 0);
}

bool JsonReader::has(std::string_view key) const {
    return object().find(key) != object().end();
}

std::optional<JsonReader> JsonReader::find(std::string_view key) const& {
    const auto found = object().find(key);
    if (found == object().end() || found->second.is_null()) return std::nullopt;
    return JsonReader(found->second, *this, found->first, 0);
}

const Json::array_t& JsonReader::array() const {
    if (!value_.is_array()) refuse("an array");
    return value_.get_ref<const Json::array_t&>();
}

const Json::object_t& JsonReader::object() const {
    if (!value_.is_object()) refuse("an object");
    return value_.get_ref<const Json::object_t&>();
}

std::string JsonReader::path() const {
    if (parent_ == nullptr) return "";
    if (parent_->value_.is_object()) return parent_->memberPath(key_);
    return fmt::format("{}[{}]", parent_->path(), index_);
}

std::string JsonReader::memberPath(std::string_view key) const {
    return parent_ == nullptr ? std::string(key) : fmt::format("{}.{}", path(), key);
}

} // namespace shotweaver
