#pragma once

class QDialog;

namespace shotweaver {

/// Gives a dialog over a window the look of one: no buttons to minimise and maximise it. Before it
/// is shown.
void makeSheet(QDialog& dialog);

} // namespace shotweaver
