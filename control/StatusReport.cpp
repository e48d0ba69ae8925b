#include "control/StatusReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace kestrel {

const QString StatusReport::Closed = QStringLiteral("closed");
const QString StatusReport::NoMIDIService = QStringLiteral("no MIDI service");
const QString StatusReport::NoConsole = QStringLiteral("no console");
const QString StatusReport::Waiting = QStringLiteral("waiting");
const QString StatusReport::Online = QStringLiteral("online");
const QString StatusReport::Silent = QStringLiteral("silent");

namespace {
// Writes the members of a report.
class Writer {
public:
    void operator()(const char* name, const QString& text) { set(name, text); }
    void operator()(const char* name, qint64 number) { set(name, number); }
    void operator()(const char* name, bool flag) { set(name, flag); }
    void operator()(const char* name, const QStringList& list)
    {
        set(name, QJsonArray::fromStringList(list));
    }
    // No time of a report is before 1970.
    void operator()(const char* name, const QDateTime& time)
    {
        set(name, time.isValid() ? QJsonValue(time.toString(Qt::ISODateWithMs)) : QJsonValue());
    }

    QJsonObject object;

private:
    void set(const char* name, const QJsonValue& value)
    {
        object.insert(QLatin1String(name), value);
    }
};

// Reads them back.
class Reader {
public:
    explicit Reader(const QJsonObject& object)
        : m_object(object)
    {
    }

    void operator()(const char* name, QString& text)
    {
        text = take(name, &QJsonValue::isString).toString();
    }
    void operator()(const char* name, bool& flag)
    {
        flag = take(name, &QJsonValue::isBool).toBool();
    }
    void operator()(const char* name, qint64& number)
    {
        const double value = take(name, &QJsonValue::isDouble).toDouble();
        isSound = isSound && value == std::floor(value) && std::abs(value) <= LargestExact;
        number = isSound ? static_cast<qint64>(value) : 0;
    }
    void operator()(const char* name, QStringList& list)
    {
        const QJsonArray values = take(name, &QJsonValue::isArray).toArray();
        for (const auto& value : values) {
            isSound = isSound && value.isString();
            list.append(value.toString());
        }
    }
    void operator()(const char* name, QDateTime& time)
    {
        const QJsonValue value = m_object.value(QLatin1String(name));
        if (value.isNull())
            return;
        time = QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
        isSound = isSound && time.isValid();
    }

    bool isSound = true;

private:
    static constexpr double LargestExact = 9007199254740992.0; // of whole numbers in a double

    QJsonValue take(const char* name, bool (QJsonValue::*isRight)() const)
    {
        QJsonValue value = m_object.value(QLatin1String(name));
        isSound = isSound && (value.*isRight)();
        return value;
    }

    const QJsonObject& m_object;
};

template <typename Report, typename Visit> void visitMembers(Report& report, Visit& visit)
{
    visit("version", report.version);
    visit("process", report.process);
    visit("link", report.link);
    visit("onlineSince", report.onlineSince);
    visit("beats", report.beats);
    visit("missedBeats", report.missedBeats);
    visit("consolePairs", report.consolePairs);
    visit("workstationRuns", report.workstationRuns);
    visit("front", report.front);
    visit("keysSet", report.keysSet);
    visit("keysTyped", report.keysTyped);
    visit("keysKeptBack", report.keysKeptBack);
    visit("mayPostKeys", report.mayPostKeys);
    visit("notices", report.notices);
}
} // namespace

QByteArray StatusReport::toJson() const
{
    Writer writer;
    visitMembers(*this, writer);
    return QJsonDocument(writer.object).toJson(QJsonDocument::Compact);
}

std::optional<StatusReport> StatusReport::fromJson(const QByteArray& text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        return {};
    const QJsonObject object = document.object();
    Reader reader(object);
    StatusReport report;
    visitMembers(report, reader);
    return reader.isSound ? std::optional(report) : std::nullopt;
}

} // namespace kestrel
