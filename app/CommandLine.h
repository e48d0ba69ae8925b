#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kestrel {

// Parses the arguments of the program. It needs no QCoreApplication, and so no display.
class CommandLine {
public:
    // A text that the program prints before it ends.
    struct Answer {
        QString text; // ends with a line feed
        bool isError; // the usage was wrong
    };

    // `arguments` begin with the name of the program.
    explicit CommandLine(const QStringList& arguments);

    // The answer to --help, --version or a wrong option. No value when the program is to start.
    [[nodiscard]] const std::optional<Answer>& answer() const { return m_answer; }
    [[nodiscard]] const QStringList& files() const { return m_files; } // absolute paths

private:
    std::optional<Answer> m_answer;
    QStringList m_files;
};

} // namespace kestrel
