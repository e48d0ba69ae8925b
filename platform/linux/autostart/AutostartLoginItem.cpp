#include "platform/linux/autostart/AutostartLoginItem.h"

#include "archive/AtomicFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {
constexpr QByteArrayView TryExec = "TryExec=";

// Escapes a value of type string for a desktop entry.
QString escaped(QString text)
{
    return text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('\n'), QStringLiteral("\\n"));
}

// The text that escaped() has escaped.
QString unescaped(const QString& value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == u'\\' && i + 1 < value.size();
        if (isEscape)
            ++i;
        text += isEscape && value[i] == u'n' ? QChar(u'\n') : value[i];
    }
    return text;
}

// Quotes one argument of an Exec line, in which `%` starts a field code.
QString quoted(const QString& argument)
{
    QString text;
    for (const QChar character : argument) {
        if (QStringLiteral("\"`$\\").contains(character))
            text += QLatin1Char('\\');
        else if (character == QLatin1Char('%'))
            text += character;
        text += character;
    }
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QByteArray entryFor(const QString& program)
{
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=ZENTA Kestrel\n"
                          "Comment=Links the ZENTA console with Pro Tools\n"
                          "Exec=%1\n"
                          "TryExec=%2\n"
                          "Icon=com.holvik.kestrel\n"
                          "StartupNotify=false\n"
                          "Terminal=false\n")
        .arg(escaped(quoted(program)), escaped(program))
        .toUtf8();
}

// When the user switches an entry off, desktops keep the file and add a key to it.
bool isSwitchedOff(const QByteArray& line)
{
    const qsizetype sign = line.indexOf('=');
    const QByteArray key = line.left(sign).trimmed();
    const QByteArray value = line.mid(sign + 1).trimmed();
    return (key == "Hidden" && value == "true")
        || (key == "X-GNOME-Autostart-enabled" && value == "false");
}

} // namespace

AutostartLoginItem::AutostartLoginItem(QString entryPath, QString program)
    : m_entryPath(std::move(entryPath))
    , m_program(std::move(program))
{
}

bool AutostartLoginItem::isEnabled()
{
    QFile file(m_entryPath);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QList<QByteArray> lines = file.readAll().split('\n');
    return std::none_of(lines.begin(), lines.end(), isSwitchedOff);
}

LoginItem::Result AutostartLoginItem::setEnabled(bool enabled)
{
    if (!enabled)
        return QFile::remove(m_entryPath) || !QFile::exists(m_entryPath) ? Result::Done
                                                                         : Result::Failed;
    const QByteArray entry = entryFor(m_program);
    return QDir().mkpath(QFileInfo(m_entryPath).path())
            && AtomicFile::write(m_entryPath, viewOf(entry))
        ? Result::Done
        : Result::Failed;
}

QString AutostartLoginItem::missingProgram() const
{
    QFile file(m_entryPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> lines = file.readAll().split('\n');
    const auto line = std::find_if(lines.begin(), lines.end(),
        [](const QByteArray& text) { return text.startsWith(TryExec); });
    if (line == lines.end())
        return {};
    const QString program = unescaped(QString::fromUtf8(line->sliced(TryExec.size())));
    return QFileInfo(program).isExecutable() ? QString() : program;
}

QString standardAutostartEntry()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/autostart/kestrel.desktop");
}

std::unique_ptr<LoginItem> makeAutostartLoginItem()
{
    return std::make_unique<AutostartLoginItem>(
        standardAutostartEntry(), QCoreApplication::applicationFilePath());
}

} // namespace kestrel
