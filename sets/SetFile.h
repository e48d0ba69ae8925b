#pragma once

#include "archive/Bytes.h"
#include "sets/SetText.h"

#include <stdexcept>

namespace kestrel {

// Sets in files, as archives or as text.
namespace SetFile {

// Why a file holds no set. A text says the place too: "Mixing.json:3:5: …".
class Error : public std::runtime_error {
public:
    enum class Kind { Unreadable, NoSet };

    Error(Kind kind, const QString& text)
        : std::runtime_error(text.toStdString())
        , m_kind(kind)
    {
    }

    [[nodiscard]] Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

// Throw Error. A file that begins with { is a text.
[[nodiscard]] SetText::Root read(const QString& path);
[[nodiscard]] SetText::Root readText(const QString& path); // whatever the file begins with
[[nodiscard]] SetText::Root fromText(const QByteArray& text, const QString& name);
[[nodiscard]] SetText::Root fromArchive(ByteView archive, const QString& name);

// The archive of the set. Throws Error unless it reads back as exactly the same set: an archive has
// no unpaired surrogates, and limits on its size.
[[nodiscard]] Bytes archive(const SetText::Root& set, const QString& name);

} // namespace SetFile

} // namespace kestrel
