#include "setup/AssignmentSheet.h"

#include "setup/AssignmentFiles.h"

#include <QFileInfo>
#include <QLineEdit>

namespace kestrel {

AssignmentSheet::AssignmentSheet(Purpose purpose, QWidget& window)
    : QFileDialog(&window)
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

QString AssignmentSheet::chosenPath() const
{
    const auto urls = selectedUrls();
    return result() == Accepted && !urls.isEmpty() ? urls.front().toLocalFile() : QString();
}

// The toolkit takes all that follows a point for an extension. Its question about replacing a file
// is to be about the name with the right one. Native panels see to both themselves.
void AssignmentSheet::accept()
{
    auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (name && acceptMode() == AcceptSave && lacksExtension())
        name->setText(name->text() + u'.' + AssignmentFiles::Extension);
    QFileDialog::accept();
}

bool AssignmentSheet::lacksExtension() const
{
    const QFileInfo typed(selectedFiles().value(0));
    return !typed.isDir()
        && typed.suffix().compare(AssignmentFiles::Extension, Qt::CaseInsensitive) != 0;
}

} // namespace kestrel
