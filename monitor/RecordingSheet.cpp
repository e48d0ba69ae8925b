#include "monitor/RecordingSheet.h"

#include "platform/DocumentFiles.h"

#include <QMessageBox>

namespace kestrel {

RecordingSheet::RecordingSheet(
    std::string script, DocumentFiles& files, QString& folder, QWidget& window)
    : FileDialog(Purpose::Save, { { QStringLiteral("Console scripts"), QStringLiteral("txt") } },
        folder, &window)
    , m_script(std::move(script))
    , m_files(files)
{
    setWindowTitle(QStringLiteral("Save Activity"));
    selectFile(QStringLiteral("recording.txt"));
    connect(this, &QDialog::accepted, this, &RecordingSheet::save);
}

void RecordingSheet::save()
{
    const QString path = chosenPath();
    if (path.isEmpty())
        return;
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(m_script.data());
    const std::string problem = m_files.replace(path.toStdString(), { bytes, m_script.size() });
    if (problem.empty())
        return;
    auto* const alert = new QMessageBox(QMessageBox::Warning, QStringLiteral("Save Activity"),
        QStringLiteral("The recording could not be saved."), QMessageBox::Ok, parentWidget());
    alert->setInformativeText(QString::fromStdString(problem));
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->open();
}

} // namespace kestrel
