#pragma once

#include "platform/FileCalls.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace shotweaver {

/// The included manual.
struct ShotweaverManual {
    struct LinkItem {
        std::string title;
        std::string url; // absolute

        bool operator==(const LinkItem&) const = default;
    };

    /// A piece of a page. Each kind shows one of the fields: "heading" its text, "steps" and
    /// "bullets" their items, "links" its links, and every other kind its text, as a paragraph.
    struct Block {
        std::string kind;
        std::optional<std::string> text;
        std::optional<std::vector<std::string>> items;
        std::optional<std::vector<LinkItem>> links;

        bool operator==(const Block&) const = default;
    };

    struct Section {
        std::string id;
        std::string title;
        std::string summary;
        std::vector<Block> blocks;

        bool operator==(const Section&) const = default;
    };

    std::string title;
    std::string description;
    std::vector<Section> sections; // in the order of display

    bool operator==(const ShotweaverManual&) const = default;
};

/// Decodes a manual from JSON whose keys are the field names. Unknown keys are ignored. Throws
/// `PlatformError` with a sentence that says where; a URL that is not absolute fails it all.
ShotweaverManual readManual(std::string_view json);

/// Why there is no manual to show. Domain and code name the error for a host's own use.
struct ManualError {
    std::string domain;
    int code = 0;
    std::string description; // a sentence

    bool operator==(const ManualError&) const = default;
};

using ManualResult = std::variant<ShotweaverManual, ManualError>;

/// The domain of the error for a manual that is not there, whose code is 1. One that cannot be read
/// or decoded has the reader's own description, no domain and no code.
inline constexpr const char* manualErrorDomain = "Shotweaver.Help";

/// Reads the manual's file.
ManualResult loadManual(FileCalls& calls, const std::string& path);

} // namespace shotweaver
