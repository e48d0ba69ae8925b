#include "sets/sheet/KeySheetFile.h"
#include "tools/kestrelctl/SetArguments.h"
#include "tools/kestrelctl/SetCommands.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

#include <map>

namespace kestrel::ctl {

namespace {
const std::map<std::string, KeySheet::Paper> papers { { "a4", KeySheet::Paper::A4 },
    { "letter", KeySheet::Paper::Letter } };

QString headingOf(const std::string& source)
{
    return source.empty() ? KeySheet::UsualHeading
                          : QFileInfo(QString::fromStdString(source)).completeBaseName();
}

// A bundle of macOS keeps Qt's plug-ins beside the folder of its programs. Qt does not look there
// when the program was started through a link, so this resolves links.
void addPlugInsOfBundle(int& count, char** arguments)
{
    QString folder;
    {
        const QCoreApplication application(count, arguments);
        folder = QCoreApplication::applicationDirPath();
    }
    QCoreApplication::addLibraryPath(QDir(folder).filePath("../PlugIns"));
}

ExitCode draw(const std::string& source, const std::string& paper, const Output& output)
{
    const UserAssignFile set(*readSet(source));
    const auto format = KeySheetFile::formatOf(QString::fromStdString(output.path));
    if (!format) {
        complain(output.path + ": the name of a key sheet ends in .pdf, .svg or .png");
        return Misused;
    }
    // Fonts need an application object, and this one needs no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "kestrelctl";
    char* arguments[] = { name, nullptr };
    addPlugInsOfBundle(count, arguments);
    const QGuiApplication application(count, arguments);
    const KeySheet sheet(set, headingOf(source), papers.at(paper));
    return output.write(viewOf(KeySheetFile::content(sheet, *format))) ? Done : Failed;
}
} // namespace

Run defineSetSheet(CLI::App& options)
{
    const auto source = defineSource(options);
    const auto paper = std::make_shared<std::string>("a4");
    options.add_option("--paper", *paper, "The size of the paper, a4 without this option")
        ->check(CLI::IsMember(&papers));
    const auto output = Output::define(options, "The sheet (.pdf, .svg or .png)");
    return [source, paper, output] {
        return guarded(Failed, [&] { return draw(*source, *paper, *output); });
    };
}

} // namespace kestrel::ctl
