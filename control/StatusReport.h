#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace kestrel {

// What the running program says about itself. All texts are for people, except `link`.
struct StatusReport {
    // The states of the link.
    static const QString Closed; // it was not opened since the start
    static const QString NoMIDIService;
    static const QString NoConsole;
    static const QString Waiting; // for the first heartbeat
    static const QString Online;
    static const QString Silent; // no heartbeat for more than five seconds

    QString version;
    qint64 process = 0; // its number
    QString link = Closed;
    QDateTime onlineSince; // invalid unless the link is online
    qint64 beats = 0;
    qint64 missedBeats = 0;
    qint64 consolePairs = 0; // pairs of MIDI ports when the link was last built
    bool workstationRuns = false;
    QString front; // the application in front; empty when it is unknown
    qint64 keysSet = 0; // keys of the console with a shortcut
    qint64 keysTyped = 0; // presses
    qint64 keysKeptBack = 0; // presses that should have typed something and did not
    bool mayPostKeys = false;
    QStringList notices; // the lines at the top of the menu

    friend bool operator==(const StatusReport&, const StatusReport&) = default;

    // An object of JSON on one line, without a line feed.
    [[nodiscard]] QByteArray toJson() const;
    // No value when the text is no object or a member is missing or of another type. Other members
    // are ignored.
    [[nodiscard]] static std::optional<StatusReport> fromJson(const QByteArray& text);
};

} // namespace kestrel
