#pragma once

#include <pugixml.hpp>

#include <string_view>
#include <vector>

namespace shotweaver {

/// The "fadeIn" and "fadeOut" elements of a clip's sound, in document order.

/// Adds those anywhere below an "adjust-volume" element.
void addVolumeFades(std::vector<pugi::xml_node>& fades, pugi::xml_node volume);

/// Adds those anywhere below an element's "adjust-volume" children and below those of its
/// "audio-role-source" children.
void addAudioFades(std::vector<pugi::xml_node>& fades, pugi::xml_node element);

/// Those of the imported clip's own volume and of the audio angle's.
std::vector<pugi::xml_node> audioFades(pugi::xml_node clip, std::string_view audioAngle);

/// Removes the fades of one kind from a finished clip: its own, and those of its sources' roles.
void removeFades(pugi::xml_node clip, std::string_view kind);

} // namespace shotweaver
