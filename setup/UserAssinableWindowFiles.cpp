// The part of the setup window that loads and saves assignment files.

#include "setup/AssignmentSheet.h"
#include "setup/UserAssinableWindowController.h"

#include <QMessageBox>

#include <functional>

namespace kestrel {

namespace {

// Calls `chosen` with the path that the user chooses.
void openSheet(UserAssinableWindowController& controller, AssignmentSheet::Purpose purpose,
    QString& folder, const std::function<void(const QString&)>& chosen)
{
    controller.setVisibleFileDialog(true);
    controller.hideUserAssignEditBox();
    auto* panel = new AssignmentSheet(purpose, folder, *controller.window());
    QObject::connect(panel, &QDialog::finished, controller.window(), [&controller, panel, chosen] {
        // A native dialog posts no close notification, which would reset the flag.
        controller.setVisibleFileDialog(false);
        if (const QString path = panel->chosenPath(); !path.isEmpty())
            chosen(path);
    });
    panel->open();
}

} // namespace

void UserAssinableWindowController::load()
{
    openSheet(*this, AssignmentSheet::Purpose::Open, m_sheetFolder, [this](const QString& path) {
        if (!loadFile(path, true))
            showInvalidFileAlert();
    });
}

void UserAssinableWindowController::save()
{
    openSheet(*this, AssignmentSheet::Purpose::Save, m_sheetFolder, [this](const QString& path) {
        UserAssignFile set;
        set.initShortcutArray();
        m_workingSet.write(set);
        if (m_files.write(path, set))
            refreshShortcutText(); // after a failed save the fields keep the typed shortcuts
    });
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
