#pragma once

#include "editor/ContentView.h"
#include "widgets/Picker.h"
#include "widgets/Stepper.h"
#include "widgets/Toggle.h"
#include "widgets/ValueSlider.h"

#include <functional>
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
    QObject::connect(control, changeOf(control), control, [&editor, setting](const auto& value) {
        editor.edit([&](EditSettings& settings) { assign(settings, setting, value); });
    });
}

} // namespace shotweaver
