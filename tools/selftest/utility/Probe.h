#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <string>

namespace kestrel::selftest {

// Answers questions about the running utility: each line on the standard input is a question, and
// the answer is one line on the standard output that begins with "probe". It changes nothing,
// except through `choose`, `hide` and `unhide`.
class Probe final : public QObject {
public:
    explicit Probe(QObject* parent);

private:
    void read();
    [[nodiscard]] static std::string answer(const QString& question, const QString& argument);
    [[nodiscard]] static std::string window(const QString& title);
    [[nodiscard]] static std::string status();
    [[nodiscard]] static std::string choose(const QString& item);
    [[nodiscard]] static std::string field(int number);
    [[nodiscard]] static std::string focus();
    [[nodiscard]] static std::string title(int button);
    [[nodiscard]] static std::string panel(const QString& path);
    [[nodiscard]] static std::string dialogs();

    QSocketNotifier m_input;
    QByteArray m_text;
};

} // namespace kestrel::selftest
