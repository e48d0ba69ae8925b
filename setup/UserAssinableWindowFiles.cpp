// Load and Save of the setup window.

#include "setup/UserAssinableWindowController.h"

#include <QFileDialog>
#include <QMessageBox>

namespace kestrel {

namespace {

QFileDialog* sheet(QWidget& window, const QString& message)
{
    auto* panel = new QFileDialog(&window, message);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setNameFilter(
        QStringLiteral("Kestrel Console File (*.%1)").arg(AssignmentFiles::Extension));
    return panel;
}

// Empty unless a file was chosen that has a path.
QString chosenPath(const QFileDialog& panel, int result)
{
    const auto urls = panel.selectedUrls();
    if (result != QDialog::Accepted || urls.isEmpty())
        return {};
    return urls.front().toLocalFile();
}

} // namespace

void UserAssinableWindowController::load()
{
    setVisibleFileDialog(true);
    hideUserAssignEditBox();
    QFileDialog* panel = sheet(*m_window, QStringLiteral("Open Kestrel Console File"));
    panel->setFileMode(QFileDialog::ExistingFile);
    QObject::connect(panel, &QDialog::finished, m_window.get(), [this, panel](int result) {
        // A native panel closes without a notification.
        setVisibleFileDialog(false);
        const QString path = chosenPath(*panel, result);
        if (!path.isEmpty() && !loadFile(path, true))
            showInvalidFileAlert();
    });
    panel->open();
}

void UserAssinableWindowController::save()
{
    setVisibleFileDialog(true);
    hideUserAssignEditBox();
    QFileDialog* panel = sheet(*m_window, QStringLiteral("Save Kestrel Console File"));
    panel->setAcceptMode(QFileDialog::AcceptSave);
    panel->setDefaultSuffix(AssignmentFiles::Extension);
    QObject::connect(panel, &QDialog::finished, m_window.get(), [this, panel](int result) {
        setVisibleFileDialog(false);
        const QString path = chosenPath(*panel, result);
        if (path.isEmpty())
            return;
        UserAssignFile set;
        set.initShortcutArray();
        changeShortcut(set);
        (void)m_files.write(path, set);
    });
    panel->open();
}

bool UserAssinableWindowController::loadFile(const QString& path, bool bSetupUI)
{
    const auto set = m_files.read(path);
    if (!set)
        return false;
    if (bSetupUI)
        setupUI(*set);
    else
        setupShortcut(*set);
    return true;
}

void UserAssinableWindowController::showInvalidFileAlert()
{
    QMessageBox alert(QMessageBox::Critical, {}, QStringLiteral("Kestrel Console"), QMessageBox::Ok,
        m_window.get());
    alert.setInformativeText(QStringLiteral("Invalid file."));
    alert.exec();
}

} // namespace kestrel
