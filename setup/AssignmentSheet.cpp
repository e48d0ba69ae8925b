#include "setup/AssignmentSheet.h"

#include "setup/AssignmentFiles.h"

namespace kestrel {

AssignmentSheet::AssignmentSheet(Purpose purpose, QString& folder, QWidget& window)
    : FileDialog(purpose,
        { { QStringLiteral("Kestrel Console File"), AssignmentFiles::Extension } }, folder, &window)
{
    setWindowTitle(purpose == Purpose::Open ? QStringLiteral("Open Kestrel Console File")
                                            : QStringLiteral("Save Kestrel Console File"));
}

} // namespace kestrel
