#include "help/ShotweaverManual.h"

#include "platform/Files.h"
#include "platform/JsonReader.h"
#include "platform/PlatformError.h"
#include "platform/RecordCoding.h"

#include <algorithm>
#include <cstddef>

namespace shotweaver {

namespace {

/// True for a scheme, a colon and something behind it, in ASCII without white space and control
/// characters.
bool isAbsoluteURL(std::string_view text) {
    constexpr std::string_view schemeCharacters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.";
    constexpr std::size_t letters = 52;
    const std::size_t colon = text.find_first_not_of(schemeCharacters);
    return colon != std::string_view::npos && text[colon] == ':' && colon + 1 < text.size() &&
           schemeCharacters.find(text.front()) < letters &&
           std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; });
}

} // namespace

template <RecordOf<ShotweaverManual> Record, class Visit>
void visitFields(Record& manual, Visit visit) {
    visit("title", manual.title);
    visit("description", manual.description);
    visit("sections", manual.sections);
}

template <RecordOf<ShotweaverManual::Section> Record, class Visit>
void visitFields(Record& section, Visit visit) {
    visit("id", section.id);
    visit("title", section.title);
    visit("summary", section.summary);
    visit("blocks", section.blocks);
}

template <RecordOf<ShotweaverManual::Block> Record, class Visit>
void visitFields(Record& block, Visit visit) {
    visit("kind", block.kind);
    visit("text", block.text);
    visit("items", block.items);
    visit("links", block.links);
}

/// Found instead of the general one: a link's address is checked where its place is known.
void decode(const JsonReader& json, ShotweaverManual::LinkItem& link) {
    decode(json.at("title"), link.title);
    const JsonReader url = json.at("url");
    decode(url, link.url);
    if (!isAbsoluteURL(link.url)) url.refuse("an absolute URL");
}

ShotweaverManual readManual(std::string_view json) {
    const Json document = parseJson(json);
    ShotweaverManual manual;
    decode(JsonReader(document), manual);
    return manual;
}

ManualResult loadManual(FileCalls& calls, const std::string& path) {
    try {
        if (fileExists(calls, path)) return readManual(readFile(calls, path));
    } catch (const PlatformError& failure) {
        return ManualError{"", 0, failure.what()};
    }
    return ManualError{manualErrorDomain, 1,
                       "The included manual could not be found. Reinstall Shotweaver to restore "
                       "the help files."};
}

} // namespace shotweaver
