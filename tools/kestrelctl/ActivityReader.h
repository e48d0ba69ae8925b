#pragma once

#include "tools/kestrelctl/RunningKestrel.h"

#include <QByteArray>

#include <optional>

namespace kestrel::ctl {

// Follows the activity of the running program, line by line. Keeps at most one message.
class ActivityReader {
public:
    explicit ActivityReader(QString socket);

    // Says what is wrong when the program does not answer.
    [[nodiscard]] bool begin();
    // The next line, without its line feed. Waits for it without a limit. No value when the running
    // program has ended.
    [[nodiscard]] std::optional<QByteArray> next();

private:
    RunningKestrel m_kestrel;
    QByteArray m_lines; // that were not read yet
};

} // namespace kestrel::ctl
