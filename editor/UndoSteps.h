#pragma once

#include "engine/EditSettings.h"
#include "persistence/EditPreset.h"
#include "platform/Uuid.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace shotweaver {

/// Something that was changed and can be taken back.
struct UndoStep {
    /// All settings, and the edit that was on show with them.
    struct Settings {
        EditSettings settings;
        std::optional<UUID> shownEdit;

        bool operator==(const Settings&) const = default;
    };

    /// One stored preset, nothing where it was deleted, and which was chosen.
    struct Preset {
        std::optional<EditPreset> preset;
        std::string chosen;

        bool operator==(const Preset&) const = default;
    };

    using State = std::variant<Settings, Preset>; // both states of a step are of one kind

    State before;
    State after;
    std::string control; // that made it; changes of one that follow each other are one step
};

/// The steps that can be undone, and those that can then be done again. Of very many the last ones.
class UndoSteps {
  public:
    /// Forgets what could have been done again. A step that ends where it began is none.
    void add(UndoStep step);
    /// The next step is one of its own, whatever control makes it.
    void endStep() { isOpen_ = false; }
    void clear();

    /// Null when there is none.
    const UndoStep* undoable() const { return done_ > 0 ? &steps_[done_ - 1] : nullptr; }
    const UndoStep* redoable() const { return done_ < steps_.size() ? &steps_[done_] : nullptr; }

    /// The step was undone, or done again.
    void didUndo();
    void didRedo();

  private:
    bool continues(std::string_view control) const;

    std::vector<UndoStep> steps_;
    std::size_t done_ = 0; // steps that can be undone; those after them can be done again
    bool isOpen_ = false;
};

} // namespace shotweaver
