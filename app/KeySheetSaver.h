#pragma once

#include <QPointer>
#include <QString>

#include <functional>

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

private:
    void save(const QString& path);
    void tell(const QString& path, const QString& problem);

    DocumentFiles& m_documents;
    ApplicationVisibility& m_visibility;
    Set m_set;
    QPointer<KeySheetDialog> m_dialog;
};

} // namespace kestrel
