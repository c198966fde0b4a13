#pragma once

#include "editor/ContentView.h"
#include "widgets/Picker.h"
#include "widgets/Stepper.h"
#include "widgets/Toggle.h"
#include "widgets/ValueSlider.h"

#include <functional>
#include <string>
#include <type_traits>

namespace shotweaver {

/// What each control announces when the user changes it.
inline auto changeOf(const Picker*) {
    return &Picker::chosen;
}
inline auto changeOf(const Stepper*) {
    return &Stepper::stepped;
}
inline auto changeOf(const Toggle*) {
    return &Toggle::switched;
}
inline auto changeOf(const ValueSlider*) {
    return &ValueSlider::moved;
}

/// Steps that follow each other are taken back as one: the control's name, or none where each
/// change counts.
inline std::string undoneTogether(const QWidget* control) {
    const bool steps = qobject_cast<const Stepper*>(control) != nullptr ||
                       qobject_cast<const ValueSlider*>(control) != nullptr;
    return steps ? control->objectName().toStdString() : std::string();
}

template <class Setting, class Value>
void assign(EditSettings& settings, const Setting& setting, const Value& value) {
    if constexpr (std::is_invocable_v<const Setting&, EditSettings&, const Value&>)
        setting(settings, value);
    else
        std::invoke(setting, settings) = value;
}

/// Lets a control change the settings. `setting` is one of them, as a pointer to member or a
/// function that gives its place, or else a rule that takes the settings and the new value:
///
///     bind(doubleMain_, editor, &EditSettings::doubleMain);
///     bind(wait_, editor, [id](EditSettings& settings) -> double& {
///         return settings.returnTimes[id];
///     });
///     bind(minimum_, editor, [](EditSettings& settings, double seconds) {
///         setMinimum(settings.mainMinimum, settings.mainMaximum, seconds);
///     });
template <class Control, class Setting>
void bind(Control* control, ContentView& editor, Setting setting) {
    QObject::connect(
        control, changeOf(control), control, [control, &editor, setting](const auto& value) {
            editor.edit([&](EditSettings& settings) { assign(settings, setting, value); },
                        ContentView::Saving::now, undoneTogether(control));
        });
}

} // namespace shotweaver
