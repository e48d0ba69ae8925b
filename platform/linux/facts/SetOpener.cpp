#include "platform/linux/facts/SetOpener.h"

#include <QProcess>

namespace kestrel {

namespace {
constexpr int MimeQueryTimeoutMs = 3000;
} // namespace

std::optional<std::string> openerOfSets()
{
    QProcess query;
    query.start("xdg-mime", { "query", "default", "application/x-zenta-kestrel-assignments" });
    if (!query.waitForFinished(MimeQueryTimeoutMs))
        return {};
    const QString entry = QString::fromUtf8(query.readAllStandardOutput()).trimmed();
    return entry.isEmpty() ? std::nullopt : std::optional(entry.toStdString());
}

} // namespace kestrel
