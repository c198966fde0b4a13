#pragma once

namespace shotweaver {

/// Has Qt pass on drags of Final Cut Pro's XML types, which it does not know on macOS. Called once,
/// before the first window is made. Not built elsewhere.
void takeFinalCutDrags();

} // namespace shotweaver
