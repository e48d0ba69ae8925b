#include "sets/SetRoot.h"
#include "sets/SetWords.h"
#include "tools/kestrelctl/SetArguments.h"
#include "tools/kestrelctl/SetCommands.h"

#include <algorithm>

namespace kestrel::ctl {

namespace {
struct Row {
    QString key;
    QString name;
    QString shortcuts;
};

Row rowOf(const SetText::Root& set, const ArchiveValue& key)
{
    const auto* const title = SetWords::find(set, SetRoot::OrgShortcutTitleArray, key);
    const auto* const entry = SetWords::find(set, SetRoot::OrgShortcutArray, key);
    return { SetWords::value(key), title ? SetWords::title(*title) : QString(),
        entry ? SetWords::shortcuts(*entry) : QString() };
}

// In characters; a terminal may show some of them wider.
qsizetype lengthOf(const QString& text)
{
    return text.toUcs4().size();
}

ExitCode showSet(const std::string& path)
{
    const SetText::Root set = readSet(path);
    std::vector<Row> rows { { QStringLiteral("KEY"), QStringLiteral("NAME"),
        QStringLiteral("SHORTCUTS") } };
    for (const ArchiveValue& key : SetWords::keysOf({ set }))
        rows.push_back(rowOf(set, key));
    qsizetype keyWidth = 0;
    qsizetype nameWidth = 0;
    for (const Row& row : rows) {
        keyWidth = std::max(keyWidth, lengthOf(row.key));
        nameWidth = std::max(nameWidth, lengthOf(row.name));
    }
    QString table;
    for (const Row& row : rows) {
        QString line = QString(keyWidth - lengthOf(row.key), u' ') + row.key + u' ' + u' '
            + row.name + QString(nameWidth - lengthOf(row.name), u' ') + u' ' + u' '
            + row.shortcuts;
        while (line.endsWith(u' '))
            line.chop(1);
        table += line + u'\n';
    }
    return print(table.toUtf8()) ? Done : Failed;
}
} // namespace

Run defineSetShow(CLI::App& options)
{
    return
        [path = defineSource(options)] { return guarded(Failed, [&] { return showSet(*path); }); };
}

Run defineSetJson(CLI::App& options)
{
    options.footer("\"kestrelctl set from-json\" makes exactly the same set of the text.");
    return [path = defineSource(options)] {
        return guarded(
            Failed, [&] { return print(SetText::text(readSet(*path))) ? Done : Failed; });
    };
}

Run defineSetFromJson(CLI::App& options)
{
    const auto path = std::make_shared<std::string>();
    options.add_option("file", *path, "The text")->type_name("FILE")->required();
    const auto output = Output::define(options, "The set (.ZKCF)");
    return [path, output] {
        return guarded(Failed, [&] {
            const QString name = QString::fromStdString(*path);
            const Bytes archive = SetFile::archive(SetFile::readText(name), name);
            return output->write(archive) ? Done : Failed;
        });
    };
}

} // namespace kestrel::ctl
