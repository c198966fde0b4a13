#pragma once

#include "platform/XmlDocument.h"

#include <optional>
#include <string_view>
#include <unordered_map>

namespace shotweaver {

/// A recording, with what every clip that shows it asks for.
struct Asset {
    explicit Asset(XmlNode asset);

    XmlNode element;
    bool hasVideo;    // "hasVideo" is exactly "1"
    bool hasAudio;    // "hasAudio" is exactly "1"
    bool hasLocation; // some "media-rep" child, or else the asset itself, has a non-empty "src"
    std::optional<std::string_view> duration; // as written
};

/// What compound clips and multicam clips refer to.
struct Media {
    explicit Media(XmlNode media);

    XmlNode element;
    XmlNode sequence; // the first one; null when there is none
    /// Has a sequence and refers to no other media: each reading finds the same.
    bool isSelfContained;
};

/// A document's "resources", looked up by identifier. Of several elements with one identifier the
/// first counts; an absent identifier is one of its own, found by an absent reference.
class Resources {
  public:
    Resources() = default;
    explicit Resources(XmlNode element);

    /// Null when nothing has that identifier.
    const Asset* asset(std::optional<std::string_view> id) const;
    const Media* media(std::optional<std::string_view> id) const;
    /// A null handle when nothing has that identifier.
    XmlNode format(std::optional<std::string_view> id) const;

  private:
    /// The resources of one kind. The keys lie in the document's own memory.
    template <class Resource>
    class Index {
      public:
        void add(XmlNode element);
        const Resource* find(std::optional<std::string_view> id) const;

      private:
        std::unordered_map<std::string_view, Resource> byID_;
        std::optional<Resource> withoutID_;
    };

    Index<Asset> assets_;
    Index<XmlNode> formats_;
    Index<Media> media_;
};

} // namespace shotweaver
