#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace kestrel {

// Receives the files that the file manager opens with this program, on systems that announce them
// by an event to the application object. They come in a later turn of the main loop.
class FileOpenEvents final : public QObject {
public:
    using Handler = std::function<void(const QStringList&)>;

    // Listens on the application object, which must exist. Without a handler the files wait.
    explicit FileOpenEvents(Handler openFiles = {});

    // The handler gets the files that wait, and all later ones.
    void setHandler(Handler openFiles);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void deliverLater();
    void deliver();

    Handler m_openFiles;
    QStringList m_pending; // files that were opened together arrive as one event each
};

} // namespace kestrel
