// Loading and saving of assignment files, down to the disk.

#include "archive/AtomicFile.h"
#include "platform/DocumentFiles.h"
#include "setup/AssignmentFiles.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace kestrel {
namespace {

class PlainFiles final : public DocumentFiles {
public:
    [[nodiscard]] std::string replace(
        std::string_view path, std::span<const std::uint8_t> content) override
    {
        return AtomicFile::write(QString::fromStdString(std::string(path)), content)
            .problem.toStdString();
    }
    [[nodiscard]] bool setCodes(std::string_view, FileCodes) override { return false; }
    [[nodiscard]] std::optional<FileCodes> codes(std::string_view) override { return {}; }
};

// Twelve keys, each with a title and all of its four shortcuts.
UserAssignFile fullSet()
{
    UserAssignFile set;
    set.initShortcutArray();
    for (int number = 1; number <= UserAssignFile::ButtonCount; ++number) {
        const ButtonEntry entry = set.getSwitchShortcut(number);
        for (std::size_t offset = 0; offset < ButtonEntrySize; offset += ShortcutRecordSize) {
            entry->replace(offset + ShortcutRecord::Modifiers, 0x120000);
            entry->replace(offset + ShortcutRecord::KeyCode, number);
            entry->replace(
                offset + ShortcutRecord::Text, QStringLiteral("\u21EA\u2318+%1").arg(number));
        }
        set.setShortcutTitle(QStringLiteral("Button %1").arg(number), number);
    }
    return set;
}

void asMedian(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Unit(benchmark::kMicrosecond)
        ->UseRealTime()
        ->MinTime(0.1)
        ->Repetitions(11)
        ->ReportAggregatesOnly();
}

struct Disk {
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("set.ZKCF"));
    PlainFiles documents;
    AssignmentFiles files { documents };
};

void loadSet(benchmark::State& state)
{
    Disk disk;
    if (!disk.files.write(disk.path, fullSet()))
        std::abort();
    for (auto _ : state) {
        if (!disk.files.read(disk.path))
            state.SkipWithError("the set cannot be read");
    }
}
BENCHMARK(loadSet)->Apply(asMedian);

void saveSet(benchmark::State& state)
{
    Disk disk;
    const UserAssignFile set = fullSet();
    for (auto _ : state) {
        if (!disk.files.write(disk.path, set))
            state.SkipWithError("the set cannot be written");
    }
}
BENCHMARK(saveSet)->Apply(asMedian);

// The least that a save costs that survives a power cut: write beside, flush to the disk, rename.
void flushedReplacement(benchmark::State& state)
{
    const Disk disk;
    const auto image = fullSet().fileImage();
    const QByteArray path = QFile::encodeName(disk.path);
    const QByteArray beside = path + ".new";
    for (auto _ : state) {
        const int file = ::open(beside.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (::write(file, image.data(), image.size()) != static_cast<ssize_t>(image.size())
            || ::fsync(file) != 0 || ::close(file) != 0
            || ::rename(beside.constData(), path.constData()) != 0)
            state.SkipWithError("the file cannot be written");
    }
    state.counters["bytes"] = static_cast<double>(image.size());
}
BENCHMARK(flushedReplacement)->Apply(asMedian);

} // namespace
} // namespace kestrel

BENCHMARK_MAIN();
