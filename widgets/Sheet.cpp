#include "widgets/Sheet.h"

#include <QDialog>

namespace shotweaver {

void makeSheet(QDialog& dialog) {
    dialog.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowCloseButtonHint);
}

} // namespace shotweaver
