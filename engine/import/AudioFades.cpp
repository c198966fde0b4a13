#include "engine/import/AudioFades.h"

#include "engine/import/XmlAccess.h"

namespace shotweaver {

void addVolumeFades(std::vector<XmlNode>& fades, XmlNode volume) {
    forEachDescendant(volume, [&](XmlNode element) {
        if (isElement(element, "fadeIn") || isElement(element, "fadeOut")) fades.push_back(element);
    });
}

void addAudioFades(std::vector<XmlNode>& fades, XmlNode element) {
    for (const XmlNode child : Elements(element)) {
        if (isElement(child, "adjust-volume")) addVolumeFades(fades, child);
        if (!isElement(child, "audio-role-source")) continue;
        for (const XmlNode volume : Elements(child, "adjust-volume"))
            addVolumeFades(fades, volume);
    }
}

std::vector<XmlNode> audioFades(XmlNode clip, std::string_view audioAngle) {
    std::vector<XmlNode> fades;
    addAudioFades(fades, clip);
    for (const XmlNode source : Elements(clip, "mc-source")) {
        if (attribute(source, "angleID") == audioAngle) addAudioFades(fades, source);
    }
    return fades;
}

} // namespace shotweaver
