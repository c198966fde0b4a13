#pragma once

#include "editor/ContentView.h"

#include <exception>

namespace shotweaver {

/// The bodies of `ContentView`'s templates, for its own sources.

template <class Body>
void ContentView::change(Body body, Saving saving) {
    try {
        const OpenChange open(openChanges_);
        body(fields_);
        if (openChanges_ > 1) return;
        endChange(saving);
    } catch (const std::exception& failure) {
        if (openChanges_ > 0) throw; // ends the outermost change as well
        fields_.error = textOf(failure);
    }
    observers_.notify();
    if (saveIsWanted_) saveSoon();
}

template <class Body>
void ContentView::perform(Body body) {
    try {
        body();
    } catch (const std::exception& failure) {
        report(failure);
    }
}

} // namespace shotweaver
