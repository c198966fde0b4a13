#pragma once

#include <pugixml.hpp>

#include <optional>
#include <string_view>
#include <unordered_map>

namespace shotweaver {

/// A document's "resources", looked up by identifier. Of several elements with one identifier the
/// first counts; an absent identifier is one of its own, found by an absent reference.
class Resources {
  public:
    Resources() = default;
    explicit Resources(pugi::xml_node element);

    pugi::xml_node element() const { return element_; }

    /// Null handles when nothing has that identifier.
    pugi::xml_node asset(std::optional<std::string_view> id) const;
    pugi::xml_node format(std::optional<std::string_view> id) const;
    pugi::xml_node media(std::optional<std::string_view> id) const;

  private:
    // The keys lie in the document's own memory.
    struct Index {
        std::unordered_map<std::string_view, pugi::xml_node> byID;
        pugi::xml_node withoutID;

        void add(pugi::xml_node resource);
        pugi::xml_node find(std::optional<std::string_view> id) const;
    };

    pugi::xml_node element_;
    Index assets_;
    Index formats_;
    Index media_;
};

} // namespace shotweaver
