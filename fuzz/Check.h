#pragma once

#include "engine/FinalCutImportError.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace shotweaver::fuzz {

/// Ends the process with the broken property's name, which is a finding.
[[noreturn]] inline void fail(const std::string& property) {
    std::fprintf(stderr, "Broken: %s\n", property.c_str());
    std::abort();
}

inline void require(bool holds, const char* property) {
    if (!holds) fail(property);
}

/// The same with what it was about.
inline void require(bool holds, const char* property, const std::string& about) {
    if (!holds) fail(std::string(property) + ": " + about);
}

/// What a call says when it refuses; nothing when it succeeds. Only the two errors that carry a
/// sentence may come out, and want of memory: anything else ends the process.
template <class Call>
std::optional<std::string> refusalOf(Call call) {
    std::string sentence;
    try {
        call();
        return std::nullopt;
    } catch (const FinalCutImportError& error) {
        sentence = error.what();
    } catch (const PlatformError& error) {
        sentence = error.what();
    } catch (const std::bad_alloc&) {
        sentence = "Out of memory.";
    }
    require(!sentence.empty(), "a refusal has a sentence");
    require(isUTF8(sentence), "a refusal is UTF-8", sentence);
    return sentence;
}

/// The fuzzer's bytes as text.
inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace shotweaver::fuzz
