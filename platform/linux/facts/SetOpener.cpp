#include "platform/linux/facts/SetOpener.h"

#include <QProcess>

namespace kestrel {

namespace {
constexpr int MimeQueryTimeout = 3000; // ms
} // namespace

std::optional<std::string> openerOfSets()
{
    QProcess query;
    query.start("xdg-mime", { "query", "default", "application/x-zenta-kestrel-assignments" });
    if (!query.waitForFinished(MimeQueryTimeout))
        return {};
    const QString entry = QString::fromUtf8(query.readAllStandardOutput()).trimmed();
    return entry.isEmpty() ? std::nullopt : std::optional(entry.toStdString());
}

} // namespace kestrel
