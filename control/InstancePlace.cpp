#include "control/InstancePlace.h"

#include <QFile>

namespace kestrel {

QString instanceFolder(const std::string& session, const std::string& name)
{
    return session.empty() ? QString() : QFile::decodeName((session + '/' + name).c_str());
}

QString instanceSocket(const QString& folder)
{
    return folder + QStringLiteral("/kestrel.socket");
}

} // namespace kestrel
