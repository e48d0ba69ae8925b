#include "fuzz/Target.h"
#include "sets/SetFile.h"

#include <QByteArray>

namespace kestrel {
namespace {

// A text that is understood has a text of its own, which means the same. What an archive can hold
// comes out of the archive again.
std::string setTextFault(const QByteArray& text)
{
    SetText::Root set;
    try {
        set = SetText::fromText(text);
    } catch (const TextError& error) {
        return error.position().line < 1 || error.position().column < 1 ? "an error without a place"
                                                                        : "";
    }
    const QByteArray written = SetText::text(set);
    if (SetText::text(SetText::fromText(written)) != written)
        return "reads back as another set: " + written.toStdString();
    try {
        static_cast<void>(SetFile::archive(set, QString()));
    } catch (const SetFile::Error&) {
    }
    return {};
}

} // namespace
} // namespace kestrel

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return setTextFault(
        { reinterpret_cast<const char*>(input.data()), static_cast<qsizetype>(input.size()) });
}
