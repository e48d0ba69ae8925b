#include "app/KeySheetSaver.h"

#include "app/KeySheetDialog.h"
#include "archive/Bytes.h"
#include "common/ApplicationVisibility.h"
#include "platform/DocumentFiles.h"
#include "sets/sheet/KeySheetFile.h"

#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>

namespace kestrel {

namespace {
KeySheet::Paper usualPaper()
{
    return QLocale().measurementSystem() == QLocale::ImperialUSSystem ? KeySheet::Paper::Letter
                                                                      : KeySheet::Paper::A4;
}
} // namespace

KeySheetSaver::KeySheetSaver(DocumentFiles& documents, ApplicationVisibility& visibility, Set set)
    : m_documents(documents)
    , m_visibility(visibility)
    , m_set(std::move(set))
{
}

KeySheetSaver::~KeySheetSaver()
{
    delete m_dialog;
}

void KeySheetSaver::choose()
{
    if (!m_dialog)
        open();
    m_visibility.activate(); // else it would open behind other windows
    m_dialog->raise();
    m_dialog->activateWindow();
}

void KeySheetSaver::open()
{
    auto* const dialog = new KeySheetDialog(m_folder);
    QObject::connect(dialog, &QDialog::finished, dialog, [this, dialog] {
        m_dialog.clear(); // it is deleted later, and may be chosen again before
        if (const QString path = dialog->chosenPath(); !path.isEmpty())
            save(path);
        if (!isOpen())
            m_closed();
    });
    m_dialog = dialog;
    m_dialog->show();
}

bool KeySheetSaver::isOpen() const
{
    return (m_dialog && m_dialog->isVisible()) || (m_alert && m_alert->isVisible());
}

void KeySheetSaver::save(const QString& path)
{
    const auto format = KeySheetFile::formatOf(path);
    if (!format)
        return tell(path, QStringLiteral("The name of a key sheet ends in .pdf, .svg or .png."));
    const KeySheet sheet(m_set(), KeySheet::UsualHeading, usualPaper());
    const QByteArray content = KeySheetFile::content(sheet, *format);
    const std::string problem = m_documents.replace(path.toStdString(), viewOf(content));
    if (!problem.empty())
        tell(path, QString::fromStdString(problem));
}

void KeySheetSaver::tell(const QString& path, const QString& problem)
{
    m_alert = new QMessageBox(QMessageBox::Critical, QStringLiteral("ZENTA Kestrel"),
        QStringLiteral("The key sheet could not be saved."), QMessageBox::Ok);
    m_alert->setAttribute(Qt::WA_DeleteOnClose);
    m_alert->setInformativeText(QFileInfo(path).fileName() + QStringLiteral(": ") + problem);
    QObject::connect(m_alert, &QDialog::finished, m_alert, [this] { m_closed(); });
    m_visibility.activate();
    m_alert->open();
}

} // namespace kestrel
