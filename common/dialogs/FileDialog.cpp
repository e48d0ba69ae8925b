#include "common/dialogs/FileDialog.h"

#include <QCompleter>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QStandardPaths>

namespace kestrel {

namespace {
// The user's documents at the first time, because a desktop starts programs in folders that hold
// nothing of the user.
QString folderToOpen(const QString& wanted)
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    for (const QString& folder : { wanted, documents }) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}
} // namespace

FileDialog::FileDialog(Purpose purpose, const QList<Kind>& kinds, QString& folder, QWidget* window)
    : QFileDialog(window, {}, folderToOpen(folder))
{
    setAttribute(Qt::WA_DeleteOnClose);
    QStringList filters;
    for (const auto& [name, extension] : kinds) {
        filters.append(QStringLiteral("%1 (*.%2)").arg(name, extension));
        m_extensions.append(extension);
    }
    setNameFilters(filters);
    if (purpose == Purpose::Open) {
        setFileMode(ExistingFile);
    } else {
        setAcceptMode(AcceptSave);
        setDefaultSuffix(m_extensions.front());
        connect(this, &QFileDialog::filterSelected, this, [this, filters](const QString& filter) {
            setDefaultSuffix(m_extensions.value(filters.indexOf(filter), m_extensions.front()));
        });
    }
    connect(this, &QDialog::finished, this, [this, &folder] {
        const QString path = chosenPath();
        if (!path.isEmpty())
            folder = QFileInfo(path).absolutePath();
        else if (directoryUrl().isLocalFile())
            folder = directoryUrl().toLocalFile();
    });
}

QString FileDialog::chosenPath() const
{
    const auto urls = selectedUrls();
    return result() == Accepted && !urls.isEmpty() ? urls.front().toLocalFile() : QString();
}

// Appends the extension or refuses the name before QFileDialog acts on it. QFileDialog takes any
// text after a point for an extension, opens any file whose name is typed, and asks about replacing
// a file before an extension could be added. Native dialogs, which have no such field, do all of
// this correctly.
void FileDialog::accept()
{
    auto* const name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (!name)
        return QFileDialog::accept();
    if (lacksExtension()) {
        if (acceptMode() == AcceptSave) {
            name->setText(name->text() + u'.' + defaultSuffix());
        } else if (QFileInfo::exists(selectedFiles().value(0))) {
            name->selectAll();
            return;
        }
    }
    // Completions come up when a folder has been read, also over the question whether to replace a
    // file, and would take its keys.
    QCompleter* const completer = name->completer();
    name->setCompleter(nullptr);
    QFileDialog::accept();
    name->setCompleter(completer);
}

bool FileDialog::lacksExtension() const
{
    const QFileInfo typed(selectedFiles().value(0));
    return !typed.isDir() && !m_extensions.contains(typed.suffix(), Qt::CaseInsensitive);
}

} // namespace kestrel
