#pragma once

#include <QColor>
#include <QIcon>

#include <cstddef>

namespace shotweaver {

/// Colours that tell things of one kind apart, by their place from 0 on. The first twelve differ
/// also to eyes that lack one kind of cones (least distance in Oklab 0.06, with the deficiencies as
/// Machado, Oliveira and Fernandes simulate them; the first four are Okabe and Ito's) and from the
/// accent and the warnings; then they begin again.
QColor distinctColour(std::size_t place);

/// A small square of that colour for lists.
QIcon swatch(std::size_t place);

} // namespace shotweaver
