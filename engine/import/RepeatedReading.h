#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <unordered_map>

namespace shotweaver {

/// Bounds how much of a document is read more than once. Compound clips and recordings that are
/// used over and over could otherwise keep a small document being read for hours.
class RepeatedReading {
  public:
    /// Call before each reading of an element with all that it holds. False once what was read
    /// again is more than about a second's work; first readings are free.
    bool mayRead(pugi::xml_node element);

  private:
    std::unordered_map<std::size_t, std::size_t> weights_; // by the node's hash, which is its own
    std::size_t repeated_ = 0;
};

} // namespace shotweaver
