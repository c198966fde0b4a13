#include "engine/import/ReadingBudget.h"

#include "engine/FinalCutImportError.h"

namespace shotweaver {

void ReadingBudget::refuse() {
    throw FinalCutImportError::invalid(
        "The compound clips in this export are nested too often to be read. Simplify them in Final "
        "Cut and export XML again.");
}

} // namespace shotweaver
