#pragma once

#include "common/dialogs/FileDialog.h"

namespace kestrel {

// The file dialog, a sheet on the setup window, in which the user chooses an assignment file.
class AssignmentSheet final : public FileDialog {
public:
    // See FileDialog for the folder.
    AssignmentSheet(Purpose purpose, QString& folder, QWidget& window);
};

} // namespace kestrel
