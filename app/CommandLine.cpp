#include "app/CommandLine.h"

#include "app/BundleInfo.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace kestrel {

namespace {
const QString Usage = QStringLiteral(
    "Usage: kestrel [--] [file ...]\n"
    "\n"
    "Links the ZENTA console with Pro Tools. The first file, a set of assignments\n"
    "(.ZKCF), becomes the live set. A second start gives its files to the Kestrel that\n"
    "runs, or opens the setup window.\n"
    "\n"
    "  --help     print this text and end\n"
    "  --version  print the version and end\n");

QString version()
{
    const auto info = BundleInfo::read(QStringLiteral(":/Info.plist"));
    return QStringLiteral("kestrel %1\n").arg(info.value_or(BundleInfo {}).shortVersion);
}
} // namespace

CommandLine::CommandLine(const QStringList& arguments)
{
    const QCommandLineOption help(QStringLiteral("help"));
    const QCommandLineOption versionOption(QStringLiteral("version"));
    // An X11 session manager restarts programs with this option. QApplication reads its value.
    const QCommandLineOption session(QStringLiteral("session"), QString(), QStringLiteral("id"));
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({ help, versionOption, session });

    if (!parser.parse(arguments)) {
        m_answer
            = { QStringLiteral("kestrel: %1\nTry \"kestrel --help\".\n").arg(parser.errorText()),
                  true };
    } else if (parser.isSet(help)) {
        m_answer = { Usage, false };
    } else if (parser.isSet(versionOption)) {
        m_answer = { version(), false };
    }
    for (const QString& file : parser.positionalArguments())
        m_files.append(QFileInfo(file).absoluteFilePath());
}

} // namespace kestrel
