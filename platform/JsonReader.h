#pragma once

#include "platform/Uuid.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// A document that was read.
using Json = nlohmann::json;

/// Parses JSON strictly: one value, well-formed UTF-8, finite numbers, no key twice in an object,
/// no more than 64 levels. Throws `PlatformError` with a sentence that says where.
Json parseJson(std::string_view text);

/// Takes the elements of long arrays while a document is parsed: objects of strings and whole
/// numbers. False stands for what it does not take.
class JsonRows {
  public:
    virtual ~JsonRows() = default;

    virtual void beginArray() = 0;
    virtual void beginRow() = 0;
    virtual bool key(std::string_view key) = 0;
    virtual bool string(const std::string& value) = 0;
    virtual bool integer(std::int64_t value) = 0;
    virtual bool endRow() = 0;
};

/// Parses as `parseJson` does, but hands the elements of some arrays to `rows`, so that they never
/// stand in the document, where these arrays are empty. They are those with the keys of `path` one
/// within the other, where "[]" stands for any element of an array: {"items", "[]", "cuts"}.
/// Nothing when such an array holds what `rows` does not take.
std::optional<Json> parseJson(std::string_view text, std::span<const std::string_view> path,
                              JsonRows& rows);

/// A value of a parsed document with its place in it, which every refusal names. Throws
/// `PlatformError`.
///
/// A reader refers to the document and to the reader that it came from, which must outlive it: the
/// place is put into words only when a refusal needs it.
class JsonReader {
  public:
    explicit JsonReader(const Json& value) : value_(value) {}

    double number() const;        // finite
    std::int64_t integer() const; // written as a whole number that fits
    bool boolean() const;
    const std::string& string() const; // of the document
    UUID uuid() const;

    bool isString() const { return value_.is_string(); }

    /// Calls visit(JsonReader) for each element of an array, in order.
    template <class Visit>
    void eachElement(Visit visit) const {
        std::size_t index = 0;
        for (const Json& element : array()) {
            visit(JsonReader(element, *this, {}, index));
            ++index;
        }
    }

    /// Calls visit(key, JsonReader) for each key of an object.
    template <class Visit>
    void eachMember(Visit visit) const {
        for (const auto& [key, value] : object())
            visit(key, JsonReader(value, *this, key, 0));
    }

    /// The value of a key that an object must have.
    JsonReader at(std::string_view key) const&;
    JsonReader at(std::string_view key) const&& = delete;

    /// Whether an object has a key, null or not.
    bool has(std::string_view key) const;

    /// The value of a key that an object may have; nothing when it is absent or null.
    std::optional<JsonReader> find(std::string_view key) const&;
    std::optional<JsonReader> find(std::string_view key) const&& = delete;

    /// Throws "The JSON's "cuts[3].start" must be " + expectation + ".".
    [[noreturn]] void refuse(std::string_view expectation) const;

  private:
    JsonReader(const Json& value, const JsonReader& parent, std::string_view key, std::size_t index)
        : value_(value), parent_(&parent), key_(key), index_(index) {}

    const Json::array_t& array() const;
    const Json::object_t& object() const;

    std::string path() const; // "cuts[3].start"; empty for the whole
    std::string memberPath(std::string_view key) const;

    const Json& value_;
    const JsonReader* parent_ = nullptr; // null for the whole
    std::string_view key_;               // in the parent, an object; of the document
    std::size_t index_ = 0;              // in the parent, an array
};

} // namespace shotweaver
