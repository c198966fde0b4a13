#include "engine/import/XmlAccess.h"

#include <array>

namespace shotweaver {

ClipAttributes::ClipAttributes(XmlNode clip) : element(clip), size(clip.name().size()) {
    constexpr std::size_t fixedSize = 16; // reading an attribute takes as long as so many bytes
    const auto take = [&](Text& field, XmlAttribute each) {
        field = each.value();
        size += field->size();
    };
    for (const XmlAttribute each : clip.attributes()) {
        const XmlName key = each.nameNumber();
        size += fixedSize + each.name().size();
        if (key == Name("ref")) take(ref, each);
        if (key == Name("offset")) take(offset, each);
        if (key == Name("name")) take(name, each);
        if (key == Name("start")) take(start, each);
        if (key == Name("duration")) take(duration, each);
        if (key == Name("enabled")) take(enabled, each);
        if (key == Name("srcEnable")) take(srcEnable, each);
        if (key == Name("audioStart")) take(audioStart, each);
        if (key == Name("audioDuration")) take(audioDuration, each);
    }
}

bool hasScaledConformRate(XmlNode clip) {
    for (const XmlNode rate : Elements(clip, "conform-rate")) {
        if (attribute(rate, "scaleEnabled") != "0") return true;
    }
    return false;
}

bool isMediaClip(XmlNode element) {
    static constexpr std::array<Name, 3> mediaClips{"asset-clip", "audio", "video"};
    return isOneOf(mediaClips, element);
}

} // namespace shotweaver
