#include "app/StartBox.h"

#include "app/SecondStart.h"

#include <cstdio>

namespace kestrel {

namespace {
const QString Title = QStringLiteral("ZENTA Kestrel");

void print(const QString& text)
{
    std::fprintf(stderr, "kestrel: %s\n", qUtf8Printable(text));
}
} // namespace

StartBox::StartBox(SecondStart& start)
    : m_box(QMessageBox::Warning, Title,
        QStringLiteral("Another Kestrel is running, and it does not answer."), QMessageBox::Cancel)
{
    m_box.setInformativeText(
        QStringLiteral("This start goes on as soon as the other Kestrel answers or ends."));
    QObject::connect(&start, &SecondStart::runsOutOfPatience, &m_box, [this] {
        print(QStringLiteral("another Kestrel is running, and it does not answer; waiting until it "
                             "answers or ends"));
        m_box.show();
    });
    QObject::connect(&m_box, &QDialog::finished, &start, [&start] { start.giveUp(); });
}

void StartBox::showProblem(const QString& problem)
{
    print(problem);
    QMessageBox box(
        QMessageBox::Critical, Title, QStringLiteral("Kestrel cannot start."), QMessageBox::Close);
    box.setInformativeText(problem);
    box.exec();
}

} // namespace kestrel
