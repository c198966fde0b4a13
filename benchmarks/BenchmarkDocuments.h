#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace shotweaver::benchmarks {

/// An export as large as they come: 8 angles of abutting clips, 800 assets, keywords on the clips;
/// continuous picture and sound. It generates and exports. With 40,000 clips to an angle it is of
/// about 100 MB.
std::string largeDocument(std::size_t clipsEach = 40'000, std::size_t clipFrames = 8);

/// A long project at 25 frames a second whose angles have `rangesEach` stretches of picture with
/// gaps between them, no two angles' gaps at the same time. The first angle's sound is continuous.
///
///     length      frames of the project, at most 999,999,999
std::string gappedDocument(std::size_t angles, std::size_t rangesEach, std::int64_t length);

/// A project of `seconds` at 25 frames a second with two continuous angles, and `annotations` each
/// of markers, keywords and connected titles spread over its clip.
std::string annotatedDocument(std::int64_t seconds, std::size_t annotations);

/// A small project with a long attribute value, comment or instruction of so many bytes.
enum class Token { attribute, comment, instruction };
std::string tokenDocument(Token token, std::size_t bytes);

/// A small file whose first angle uses a compound clip of `clips` clips `uses` times, and shows a
/// clip's length of it each time.
std::string compoundDocument(std::size_t clips, std::size_t uses);

} // namespace shotweaver::benchmarks
