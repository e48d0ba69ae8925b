#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace kestrel {

// Receives the files that the file manager opens with the running program, on systems that announce
// them by an event to the application object.
class FileOpenEvents final : public QObject {
public:
    using Handler = std::function<void(const QStringList&)>;

    // Listens on the application object, which must exist.
    explicit FileOpenEvents(Handler openFiles);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void deliver();

    Handler m_openFiles;
    QStringList m_pending; // files that were opened together arrive as one event each
};

} // namespace kestrel
