#include "app/KeySheetDialog.h"

namespace kestrel {

namespace {
QList<FileDialog::Kind> kinds()
{
    return { { QStringLiteral("PDF document"), QStringLiteral("pdf") },
        { QStringLiteral("SVG drawing"), QStringLiteral("svg") },
        { QStringLiteral("PNG picture"), QStringLiteral("png") } };
}
} // namespace

KeySheetDialog::KeySheetDialog(QString& folder)
    : FileDialog(Purpose::Save, kinds(), folder, nullptr)
{
    setWindowTitle(QStringLiteral("Save Key Sheet"));
    selectFile(QStringLiteral("Key Sheet.pdf"));
}

} // namespace kestrel
