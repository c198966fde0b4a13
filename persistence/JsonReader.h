#pragma once

#include "platform/Uuid.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// A document that was read.
using Json = nlohmann::json;

/// A document to write: its keys stay in the order in which they were added.
using OrderedJson = nlohmann::ordered_json;

/// Parses JSON strictly: one value, well-formed UTF-8, finite numbers, no key twice in an object,
/// no more than 64 levels. Throws `PlatformError` with a sentence that says where.
Json parseJson(std::string_view text);

/// A value of a parsed document with its place in it, which every refusal names. Throws
/// `PlatformError`.
class JsonReader {
  public:
    /// `value` must outlive the reader.
    explicit JsonReader(const Json& value) : value_(value) {}

    double number() const;        // finite
    std::int64_t integer() const; // written as a whole number that fits
    bool boolean() const;
    std::string string() const;
    UUID uuid() const;

    /// The elements of an array.
    std::vector<JsonReader> elements() const;

    /// The keys of an object, each with its reader.
    std::vector<std::pair<std::string, JsonReader>> members() const;

    /// The value of a key that an object must have.
    JsonReader at(std::string_view key) const;

    /// True when an object has that key with a value other than null.
    bool has(std::string_view key) const;

    [[noreturn]] void refuse(std::string_view expectation) const;

  private:
    JsonReader(const Json& value, std::string path) : value_(value), path_(std::move(path)) {}

    const Json& object() const;
    std::string memberPath(std::string_view key) const;

    const Json& value_;
    std::string path_; // "cuts[3].start"; empty for the whole
};

} // namespace shotweaver
