#pragma once

#include "platform/XmlDocument.h"

#include <string_view>
#include <vector>

namespace shotweaver {

/// The "fadeIn" and "fadeOut" elements of a clip's sound, in document order.

/// Adds those anywhere below an "adjust-volume" element.
void addVolumeFades(std::vector<XmlNode>& fades, XmlNode volume);

/// Adds those anywhere below an element's "adjust-volume" children and below those of its
/// "audio-role-source" children.
void addAudioFades(std::vector<XmlNode>& fades, XmlNode element);

/// Those of the imported clip's own volume and of the audio angle's.
std::vector<XmlNode> audioFades(XmlNode clip, std::string_view audioAngle);

} // namespace shotweaver
