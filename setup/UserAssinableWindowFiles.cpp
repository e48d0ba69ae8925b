// The part of the setup window that loads and saves assignment files.

#include "setup/AssignmentSheet.h"
#include "setup/UserAssinableWindowController.h"

#include <QMessageBox>

namespace kestrel {

void UserAssinableWindowController::load()
{
    setVisibleFileDialog(true);
    hideUserAssignEditBox();
    auto* panel = new AssignmentSheet(AssignmentSheet::Purpose::Open, *m_window);
    QObject::connect(panel, &QDialog::finished, m_window.get(), [this, panel] {
        // A native dialog posts no close notification, which would reset the flag.
        setVisibleFileDialog(false);
        const QString path = panel->chosenPath();
        if (!path.isEmpty() && !loadFile(path, true))
            showInvalidFileAlert();
    });
    panel->open();
}

void UserAssinableWindowController::save()
{
    setVisibleFileDialog(true);
    hideUserAssignEditBox();
    auto* panel = new AssignmentSheet(AssignmentSheet::Purpose::Save, *m_window);
    QObject::connect(panel, &QDialog::finished, m_window.get(), [this, panel] {
        setVisibleFileDialog(false);
        const QString path = panel->chosenPath();
        if (path.isEmpty())
            return;
        UserAssignFile set;
        set.initShortcutArray();
        m_workingSet.write(set);
        if (m_files.write(path, set))
            refreshShortcutText(); // after a failed save the fields keep the typed shortcuts
    });
    panel->open();
}

bool UserAssinableWindowController::loadFile(const QString& path, bool bSetupUI)
{
    const auto set = m_files.read(path);
    if (!set)
        return false;
    m_unassigned.clear();
    if (bSetupUI)
        setupUI(*set);
    else
        setupShortcut(*set);
    return true;
}

void UserAssinableWindowController::showInvalidFileAlert()
{
    const QString message = QStringLiteral("Kestrel Console");
    QMessageBox alert(QMessageBox::Critical, message, message, QMessageBox::Ok, m_window.get());
    alert.setInformativeText(QStringLiteral("Invalid file."));
    alert.exec();
}

} // namespace kestrel
