#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kestrel {

// What the program was started with. Needs no QCoreApplication, and so no display.
class CommandLine {
public:
    // A text that is all the program has to say before it ends.
    struct Answer {
        QString text; // ends with a line feed
        bool isError; // of usage
    };

    // `arguments` begin with the name of the program.
    explicit CommandLine(const QStringList& arguments);

    // To --help, --version and wrong options; missing when the program is to start.
    [[nodiscard]] const std::optional<Answer>& answer() const { return m_answer; }
    [[nodiscard]] const QStringList& files() const { return m_files; } // absolute paths

private:
    std::optional<Answer> m_answer;
    QStringList m_files;
};

} // namespace kestrel
