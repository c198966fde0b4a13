#include "editor/ContentView.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace shotweaver {

std::optional<UUID> ContentView::shownEditID() const {
    const EditRevision* const edit = fields_.shownEdit();
    return edit ? std::optional(edit->id) : std::nullopt;
}

/// Another project has settings of its own, to which nothing can be taken back.
void ContentView::recordSettings(UndoStep::Settings before, std::string_view control) {
    if (judged_.project != fields_.project)
        undoSteps_.clear();
    else if (!isTakingStep_)
        undoSteps_.add({std::move(before), UndoStep::Settings{fields_.settings, shownEditID()},
                        std::string(control)});
}

void ContentView::undo() {
    takeStep(undoSteps_.undoable(), &UndoStep::after, &UndoStep::before, &UndoSteps::didUndo);
}

void ContentView::redo() {
    takeStep(undoSteps_.redoable(), &UndoStep::before, &UndoStep::after, &UndoSteps::didRedo);
}

void ContentView::takeStep(const UndoStep* step, UndoStep::State UndoStep::*from,
                           UndoStep::State UndoStep::*to, void (UndoSteps::*didTake)()) {
    if (!step) return;
    const UndoStep::State& state = step->*to;
    isTakingStep_ = true;
    change([&](EditorFields& fields) {
        if (const auto* const settings = std::get_if<UndoStep::Settings>(&state))
            showState(fields, *settings);
        else
            showState(fields, std::get<UndoStep::Preset>(step->*from),
                      std::get<UndoStep::Preset>(state));
        (undoSteps_.*didTake)();
    });
    isTakingStep_ = false;
}

/// The edit that was on show comes back where the history still has it.
void ContentView::showState(EditorFields& fields, const UndoStep::Settings& state) {
    fields.settings = state.settings;
    const std::vector<EditRevision>& edits = fields.history.items;
    const auto found = std::find_if(edits.begin(), edits.end(), [&](const EditRevision& edit) {
        return edit.id == state.shownEdit;
    });
    fields.showsCurrentEdit = found != edits.end();
    if (found != edits.end()) fields.history.index = std::distance(edits.begin(), found);
    keptDidChange();
}

/// Stores a preset as it was in place of what became of it, or deletes it.
void ContentView::showState(EditorFields& fields, const UndoStep::Preset& from,
                            const UndoStep::Preset& to) {
    const EditPreset& known = to.preset ? *to.preset : *from.preset;
    readPresetData();
    replacePreset(known.id, to.preset);
    fields.chosenPreset = to.chosen;
    fields.presetNotice = (to.preset ? "Restored " : "Deleted ") + known.name + ".";
}

} // namespace shotweaver
