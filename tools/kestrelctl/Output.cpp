#include "tools/kestrelctl/Output.h"

#include <cstdio>

namespace kestrel::ctl {

bool printLine(const std::string& line)
{
    return std::puts(line.c_str()) >= 0 && std::fflush(stdout) == 0;
}

std::string printable(const QString& text)
{
    QString shown = text;
    for (QChar& character : shown) {
        if (character.category() == QChar::Other_Control)
            character = u'.';
    }
    return shown.toStdString();
}

} // namespace kestrel::ctl
