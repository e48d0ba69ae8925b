#include "app/KeySheetDialog.h"

#include "sets/sheet/KeySheetFile.h"

#include <QLineEdit>

namespace kestrel {

KeySheetDialog::KeySheetDialog()
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Save Key Sheet"));
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setNameFilters({ QStringLiteral("PDF document (*.pdf)"), QStringLiteral("SVG drawing (*.svg)"),
        QStringLiteral("PNG picture (*.png)") });
    setDefaultSuffix(QStringLiteral("pdf"));
    // The suffix that is added is that of the chosen kind.
    connect(this, &QFileDialog::filterSelected, this,
        [this](const QString& filter) { setDefaultSuffix(filter.section(u'.', -1).chopped(1)); });
    selectFile(QStringLiteral("Key Sheet.pdf"));
}

QString KeySheetDialog::chosenPath() const
{
    const auto urls = selectedUrls();
    return result() == Accepted && !urls.isEmpty() ? urls.front().toLocalFile() : QString();
}

// Adds the extension before QFileDialog acts on the name, which asks about replacing a file before
// it adds one, and takes any text after a point for an extension. Native dialogs do this correctly.
void KeySheetDialog::accept()
{
    auto* const name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const QString path = selectedFiles().value(0);
    if (name && !QFileInfo(path).isDir() && !KeySheetFile::formatOf(path))
        name->setText(name->text() + u'.' + defaultSuffix());
    QFileDialog::accept();
}

} // namespace kestrel
