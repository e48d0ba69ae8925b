#include "control/ActivityLine.h"

#include "activity/OutcomeWords.h"
#include "activity/PacketWords.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <string_view>

namespace kestrel {

namespace {
using Kind = ActivityEvent::Kind;
using Outcome = ActivityEvent::Outcome;
using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::milliseconds;

// In the order of the enumerations.
constexpr std::array<std::string_view, 9> KindNames { "packet", "linkOpened", "linkRebuilt",
    "noConsole", "noMIDIService", "workstationMissing", "workstationFound", "consoleSilent",
    "packetsLost" };
static_assert(KindNames.size() == static_cast<std::size_t>(Kind::PacketsLost) + 1);
constexpr std::array<std::string_view, 13> OutcomeNames { "ignored", "awaited", "answered",
    "notAnswered", "shown", "typed", "released", "otherInFront", "noShortcut", "noSuchKey",
    "notPermitted", "keyUnknown", "sessionUnavailable" };
static_assert(OutcomeNames.size() == static_cast<std::size_t>(Outcome::SessionUnavailable) + 1);

constexpr std::int64_t LargestPacket = 65'536; // more than any MIDI service delivers

QString textOf(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

template <typename Enumeration, std::size_t Size>
QString nameOf(Enumeration value, const std::array<std::string_view, Size>& names)
{
    return textOf(names.at(static_cast<std::size_t>(value)));
}

template <typename Enumeration, std::size_t Size>
std::optional<Enumeration> named(
    const QJsonValue& name, const std::array<std::string_view, Size>& names)
{
    const auto found = std::find(names.begin(), names.end(), name.toString().toStdString());
    if (found == names.end())
        return {};
    return static_cast<Enumeration>(found - names.begin());
}

std::optional<std::int64_t> wholeNumber(const QJsonValue& value)
{
    const std::int64_t number = value.toInteger(-1);
    return number >= 0 ? std::optional(number) : std::nullopt;
}

void addPacket(QJsonObject& object, const ActivityEvent& event)
{
    const auto bytes = event.bytes();
    const QByteArray kept(
        reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    object.insert("bytes", QString::fromLatin1(kept.toHex(' ').toUpper()));
    object.insert("size", static_cast<qint64>(event.packetSize()));
    object.insert("outcome", nameOf(event.outcome(), OutcomeNames));
    object.insert("result", textOf(OutcomeWords::describe(event)));
}

// False when the object describes no packet.
bool takePacket(const QJsonObject& object, ActivityEvent& event)
{
    const auto outcome = named<Outcome>(object.value("outcome"), OutcomeNames);
    const auto size = wholeNumber(object.value("size"));
    if (!outcome || !size || !object.value("bytes").isString())
        return false;
    QByteArray packet = QByteArray::fromHex(object.value("bytes").toString().toLatin1());
    constexpr auto Kept = static_cast<qsizetype>(ActivityEvent::KeptBytes);
    if (*size > LargestPacket || packet.size() != std::min<qsizetype>(*size, Kept))
        return false;
    event.setOutcome(*outcome);
    packet.append(QByteArray(*size - packet.size(), '\0'));
    event.setPacket({ reinterpret_cast<const std::uint8_t*>(packet.constData()),
        static_cast<std::size_t>(packet.size()) });
    return true;
}
} // namespace

QByteArray ActivityLine::toJson() const
{
    const auto wall = duration_cast<milliseconds>(event.wallTime().time_since_epoch());
    const auto steady = duration_cast<microseconds>(event.time().time_since_epoch());
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(wall.count(), Qt::UTC);
    QJsonObject object;
    object.insert("number", static_cast<qint64>(number));
    object.insert("time", time.toString(Qt::ISODateWithMs));
    object.insert("microseconds", static_cast<qint64>(steady.count()));
    object.insert("event", nameOf(event.kind(), KindNames));
    object.insert("what", textOf(PacketWords::describe(event)));
    object.insert("text", textOf(event.text()));
    if (event.kind() == Kind::Packet)
        addPacket(object, event);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<ActivityLine> ActivityLine::fromJson(const QByteArray& text)
{
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    const auto number = wholeNumber(object.value("number"));
    const auto steady = wholeNumber(object.value("microseconds"));
    const auto kind = named<Kind>(object.value("event"), KindNames);
    const QDateTime wall
        = QDateTime::fromString(object.value("time").toString(), Qt::ISODateWithMs);
    if (!number || !steady || !kind || !wall.isValid())
        return {};
    ActivityLine line { static_cast<std::uint64_t>(*number),
        { *kind, Clock::TimePoint(microseconds(*steady)),
            Clock::WallTime(milliseconds(wall.toMSecsSinceEpoch())) } };
    line.event.setText(object.value("text").toString().toStdString());
    if (*kind == Kind::Packet && !takePacket(object, line.event))
        return {};
    return line;
}

QByteArray droppedLine(std::uint64_t count)
{
    QJsonObject object;
    object.insert("dropped", static_cast<qint64>(count));
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<std::uint64_t> droppedIn(const QByteArray& text)
{
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    const auto count = wholeNumber(object.value("dropped"));
    return count ? std::optional(static_cast<std::uint64_t>(*count)) : std::nullopt;
}

} // namespace kestrel
