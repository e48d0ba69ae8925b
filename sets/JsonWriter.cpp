#include "sets/JsonValue.h"

#include <algorithm>
#include <limits>

namespace kestrel {

namespace {
using Type = JsonValue::Type;

constexpr qsizetype LineLength = 100;

bool needsEscape(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return c == u'"' || c == u'\\';
    }
}

void escape(QString& out, QChar c)
{
    if (c == u'"' || c == u'\\') {
        out += u'\\';
        out += c;
    } else if (c == u'\n') {
        out += QLatin1String("\\n");
    } else if (c == u'\t') {
        out += QLatin1String("\\t");
    } else {
        out += QLatin1String("\\u");
        out += QString::number(c.unicode(), 16).rightJustified(4, u'0');
    }
}

void writeString(QString& out, const QString& text)
{
    out += u'"';
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            out += c;
            out += text[++i];
        } else if (c.isSurrogate() || needsEscape(c)) {
            escape(out, c);
        } else {
            out += c;
        }
    }
    out += u'"';
}

class Writer {
public:
    Writer(QString& out, qsizetype lineLength)
        : m_out(out)
        , m_lineLength(lineLength)
    {
    }

    // `used` is what the line already has before the value.
    void write(const JsonValue& value, qsizetype indent, qsizetype used);

private:
    bool writeInLine(const JsonValue& value, qsizetype room);
    void writeScalar(const JsonValue& value);
    void beginLine(qsizetype indent);

    QString& m_out;
    qsizetype m_lineLength;
};

void Writer::writeScalar(const JsonValue& value)
{
    switch (value.type) {
    case Type::Null:
        m_out += QLatin1String("null");
        break;
    case Type::Boolean:
        m_out += value.boolean ? QLatin1String("true") : QLatin1String("false");
        break;
    case Type::Number:
        m_out += value.text;
        break;
    default:
        writeString(m_out, value.text);
    }
}

// Stops and returns false as soon as the value needs more than `room`.
bool Writer::writeInLine(const JsonValue& value, qsizetype room)
{
    const qsizetype end = m_out.size() + room;
    if (value.is(Type::Array)) {
        m_out += u'[';
        for (const JsonValue& item : value.items) {
            if (&item != &value.items.front())
                m_out += QLatin1String(", ");
            if (m_out.size() > end || !writeInLine(item, end - m_out.size()))
                return false;
        }
        m_out += u']';
    } else if (value.is(Type::Object)) {
        m_out += u'{';
        for (const JsonMember& member : value.members) {
            m_out += &member == &value.members.front() ? QLatin1String(" ") : QLatin1String(", ");
            writeString(m_out, member.name);
            m_out += QLatin1String(": ");
            if (m_out.size() > end || !writeInLine(member.value, end - m_out.size()))
                return false;
        }
        m_out += value.members.empty() ? QLatin1String("}") : QLatin1String(" }");
    } else {
        writeScalar(value);
    }
    return m_out.size() <= end;
}

void Writer::beginLine(qsizetype indent)
{
    m_out += u'\n';
    m_out += QString(indent, u' ');
}

void Writer::write(const JsonValue& value, qsizetype indent, qsizetype used)
{
    const qsizetype start = m_out.size();
    const bool isContainer = value.is(Type::Array) || value.is(Type::Object);
    if (!isContainer)
        return writeScalar(value);
    if (writeInLine(value, std::max<qsizetype>(m_lineLength - used - 1, 2)))
        return;
    m_out.truncate(start);
    const bool isArray = value.is(Type::Array);
    m_out += isArray ? u'[' : u'{';
    const qsizetype inner = indent + 2;
    for (const JsonValue& item : value.items) {
        if (&item != &value.items.front())
            m_out += u',';
        beginLine(inner);
        write(item, inner, inner);
    }
    for (const JsonMember& member : value.members) {
        if (&member != &value.members.front())
            m_out += u',';
        beginLine(inner);
        const qsizetype lineStart = m_out.size();
        writeString(m_out, member.name);
        m_out += QLatin1String(": ");
        write(member.value, inner, inner + m_out.size() - lineStart);
    }
    beginLine(indent);
    m_out += isArray ? u']' : u'}';
}
} // namespace

QByteArray jsonText(const JsonValue& value)
{
    QString out;
    Writer(out, LineLength).write(value, 0, 0);
    out += u'\n';
    return out.toUtf8();
}

QString jsonLine(const JsonValue& value)
{
    QString out;
    Writer(out, std::numeric_limits<int>::max()).write(value, 0, 0);
    return out;
}

} // namespace kestrel
