#include "engine/export/AudioFades.h"

#include "engine/import/XmlAccess.h"

namespace shotweaver {

void addVolumeFades(std::vector<pugi::xml_node>& fades, pugi::xml_node volume) {
    forEachDescendant(volume, [&](pugi::xml_node element) {
        if (isElement(element, "fadeIn") || isElement(element, "fadeOut")) fades.push_back(element);
    });
}

void addAudioFades(std::vector<pugi::xml_node>& fades, pugi::xml_node element) {
    for (const pugi::xml_node child : Elements(element)) {
        if (isElement(child, "adjust-volume")) addVolumeFades(fades, child);
        if (!isElement(child, "audio-role-source")) continue;
        for (const pugi::xml_node volume : Elements(child, "adjust-volume"))
            addVolumeFades(fades, volume);
    }
}

std::vector<pugi::xml_node> audioFades(pugi::xml_node clip, std::string_view audioAngle) {
    std::vector<pugi::xml_node> fades;
    addAudioFades(fades, clip);
    for (const pugi::xml_node source : Elements(clip, "mc-source")) {
        if (attribute(source, "angleID") == audioAngle) addAudioFades(fades, source);
    }
    return fades;
}

void removeFades(pugi::xml_node clip, std::string_view kind) {
    std::vector<pugi::xml_node> fades;
    for (const pugi::xml_node volume : Elements(clip, "adjust-volume"))
        addVolumeFades(fades, volume);
    for (const pugi::xml_node source : Elements(clip, "mc-source")) {
        for (const pugi::xml_node role : Elements(source, "audio-role-source")) {
            for (const pugi::xml_node volume : Elements(role, "adjust-volume"))
                addVolumeFades(fades, volume);
        }
    }
    // Backwards, so that a fade within a fade goes before the one that holds it.
    for (auto fade = fades.rbegin(); fade != fades.rend(); ++fade) {
        if (isElement(*fade, kind)) fade->parent().remove_child(*fade);
    }
}

} // namespace shotweaver
