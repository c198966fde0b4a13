#include "editor/UndoSteps.h"

#include <utility>

namespace shotweaver {

namespace {

constexpr std::size_t mostSteps = 100;

} // namespace

bool UndoSteps::continues(std::string_view control) const {
    return isOpen_ && done_ > 0 && !control.empty() && steps_[done_ - 1].control == control;
}

void UndoSteps::add(UndoStep step) {
    steps_.resize(done_);
    if (continues(step.control)) {
        step.before = std::move(steps_.back().before);
        steps_.pop_back();
    }
    isOpen_ = step.before != step.after;
    if (isOpen_) steps_.push_back(std::move(step));
    if (steps_.size() > mostSteps) steps_.erase(steps_.begin());
    done_ = steps_.size();
}

void UndoSteps::clear() {
    steps_.clear();
    done_ = 0;
}

void UndoSteps::didUndo() {
    --done_;
    endStep();
}

void UndoSteps::didRedo() {
    ++done_;
    endStep();
}

} // namespace shotweaver
