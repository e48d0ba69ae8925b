#pragma once

#include "common/dialogs/FileDialog.h"

namespace kestrel {

// The file dialog in which the user chooses where a key sheet is saved. It belongs to no window.
class KeySheetDialog final : public FileDialog {
public:
    // See FileDialog for the folder.
    explicit KeySheetDialog(QString& folder);
};

} // namespace kestrel
