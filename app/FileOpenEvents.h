#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace kestrel {

// Hears of files that the file manager opens with the running program, where the system says so
// by an event to the application object.
class FileOpenEvents final : public QObject {
public:
    using Handler = std::function<void(const QStringList&)>;

    // Listens on the application object, which must exist.
    explicit FileOpenEvents(Handler openFiles);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void deliver();

    Handler m_openFiles;
    QStringList m_pending; // files opened together come as one event each
};

} // namespace kestrel
