#include "app/FileOpenEvents.h"

#include <QCoreApplication>
#include <QFileOpenEvent>
#include <QMetaObject>

#include <utility>

namespace kestrel {

FileOpenEvents::FileOpenEvents(Handler openFiles)
    : m_openFiles(std::move(openFiles))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FileOpenEvents::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::FileOpen || watched != QCoreApplication::instance())
        return false;
    const QString path = static_cast<QFileOpenEvent*>(event)->file();
    if (path.isEmpty())
        return true;
    if (m_pending.isEmpty())
        deliverLater();
    m_pending.append(path);
    return true;
}

void FileOpenEvents::setHandler(Handler openFiles)
{
    m_openFiles = std::move(openFiles);
    if (!m_pending.isEmpty())
        deliverLater();
}

void FileOpenEvents::deliverLater()
{
    QMetaObject::invokeMethod(
        this, [this] { deliver(); }, Qt::QueuedConnection);
}

void FileOpenEvents::deliver()
{
    if (m_openFiles && !m_pending.isEmpty())
        m_openFiles(std::exchange(m_pending, {}));
}

} // namespace kestrel
