#pragma once

namespace shotweaver {

/// What a control over numbers steps through.
struct ControlRange {
    double minimum = 0;
    double maximum = 0;
    double step = 1;
};

} // namespace shotweaver
