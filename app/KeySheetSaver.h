#pragma once

#include <QPointer>
#include <QString>

#include <functional>

class QMessageBox;

namespace kestrel {

class ApplicationVisibility;
class DocumentFiles;
class KeySheetDialog;
class UserAssignFile;

// Saves key sheets of the live set, where the user chooses. Main thread only.
class KeySheetSaver {
public:
    using Set = std::function<const UserAssignFile&()>;

    // The services outlive this object.
    KeySheetSaver(DocumentFiles& documents, ApplicationVisibility& visibility, Set set);
    ~KeySheetSaver();
    KeySheetSaver(const KeySheetSaver&) = delete;
    KeySheetSaver& operator=(const KeySheetSaver&) = delete;

    // Asks for a file. A second call brings the open dialog to the front.
    void choose();
    // `closed` is called when the dialog, or the alert that follows it, has closed.
    void setClosed(std::function<void()> closed) { m_closed = std::move(closed); }
    // True while the dialog or the alert is open.
    [[nodiscard]] bool isOpen() const;

private:
    void open();
    void save(const QString& path);
    void tell(const QString& path, const QString& problem);

    DocumentFiles& m_documents;
    ApplicationVisibility& m_visibility;
    Set m_set;
    std::function<void()> m_closed = [] {};
    QString m_folder; // of the last dialog
    QPointer<KeySheetDialog> m_dialog;
    QPointer<QMessageBox> m_alert;
};

} // namespace kestrel
