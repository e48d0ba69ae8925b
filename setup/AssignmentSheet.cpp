#include "setup/AssignmentSheet.h"

#include "setup/AssignmentFiles.h"

#include <QCompleter>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QStandardPaths>

namespace kestrel {

AssignmentSheet::AssignmentSheet(Purpose purpose, const QString& folder, QWidget& window)
    : QFileDialog(&window, {}, folder)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setNameFilter(QStringLiteral("Kestrel Console File (*.%1)").arg(AssignmentFiles::Extension));
    if (purpose == Purpose::Open) {
        setWindowTitle(QStringLiteral("Open Kestrel Console File"));
        setFileMode(ExistingFile);
    } else {
        setWindowTitle(QStringLiteral("Save Kestrel Console File"));
        setAcceptMode(AcceptSave);
        setDefaultSuffix(AssignmentFiles::Extension);
    }
}

QString AssignmentSheet::firstFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

QString AssignmentSheet::chosenPath() const
{
    const auto urls = selectedUrls();
    return result() == Accepted && !urls.isEmpty() ? urls.front().toLocalFile() : QString();
}

// Appends the extension or refuses the name before QFileDialog acts on it. QFileDialog takes any
// text after a point for an extension, opens any file whose name is typed, and asks about replacing
// a file before an extension could be added. Native dialogs do all of this correctly.
void AssignmentSheet::accept()
{
    auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (name && lacksExtension()) {
        if (acceptMode() == AcceptSave) {
            name->setText(name->text() + u'.' + AssignmentFiles::Extension);
        } else if (QFileInfo::exists(selectedFiles().value(0))) {
            name->selectAll();
            return;
        }
    }
    if (!name)
        return QFileDialog::accept();
    // Completions come up when a folder has been read, also over the question whether to replace a
    // file, and would take its keys.
    QCompleter* const completer = name->completer();
    name->setCompleter(nullptr);
    QFileDialog::accept();
    name->setCompleter(completer);
}

bool AssignmentSheet::lacksExtension() const
{
    const QFileInfo typed(selectedFiles().value(0));
    return !typed.isDir()
        && typed.suffix().compare(AssignmentFiles::Extension, Qt::CaseInsensitive) != 0;
}

} // namespace kestrel
