#pragma once

#include "editor/HostServices.h"

#include <string>
#include <utility>

namespace shotweaver {

/// Our own error for an application that was found but could not be asked to open a file.
/// `description` is a sentence.
inline HostError openError(std::string description) {
    return {"Shotweaver", 2, std::move(description)};
}

/// Our own error where there is no Final Cut Pro.
inline HostError notFoundError() {
    return {"Shotweaver", 1,
            "Final Cut Pro could not be found. Your exported files have been saved."};
}

} // namespace shotweaver
