#include "archive/XmlListCheck.h"

#include "archive/ArchiveError.h"
#include "archive/ArchiveLimits.h"
#include "archive/XmlContent.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <string_view>

namespace kestrel {

namespace {

using Kind = ArchiveError::Kind;
using XmlContent::Blanks;
using XmlContent::isBlank;
using XmlContent::refuse;

struct Element {
    std::string_view name;
    std::size_t contentStart = 0;
    std::size_t children = 0;
    bool keyWaits = false; // the last child was a key, its value must follow
};

bool isContainer(std::string_view name)
{
    return name == "dict" || name == "array" || name == "plist";
}

bool isKnown(std::string_view name)
{
    static constexpr std::array Names { "plist", "dict", "array", "key", "string", "integer",
        "real", "true", "false", "data", "date" };
    return std::find(Names.begin(), Names.end(), name) != Names.end();
}

class XmlScanner {
public:
    XmlScanner(std::string_view xml, std::size_t maxElements)
        : m_xml(xml)
        , m_maxElements(maxElements)
    {
    }
    void check();

private:
    void skipProlog();
    void takeTag(std::string_view tag);
    void open(std::string_view name);
    void close(std::string_view name);
    void checkContent(std::string_view name, std::string_view content);
    void countMoves(std::string_view text);
    std::string_view tagAt(std::size_t at) const;

    std::string_view m_xml;
    std::size_t m_maxElements;
    std::size_t m_at = 0;
    std::vector<Element> m_open;
    std::size_t m_count = 0;
    std::size_t m_movedBytes = 0; // see ArchiveLimits
    bool m_isDone = false;
};

// The text between < and >. Quotes must come in pairs, or libplist would read past this >.
std::string_view XmlScanner::tagAt(std::size_t at) const
{
    const std::size_t end = m_xml.find('>', at);
    if (end == std::string_view::npos)
        refuse("tag without an end");
    const std::string_view tag = m_xml.substr(at + 1, end - at - 1);
    if (tag.find('<') != std::string_view::npos || std::count(tag.begin(), tag.end(), '"') % 2
        || tag.find('\'') != std::string_view::npos)
        refuse("tag that is cut off");
    return tag;
}

void XmlScanner::skipProlog()
{
    for (;;) {
        m_at = std::min(m_xml.find_first_not_of(Blanks, m_at), m_xml.size());
        const std::string_view rest = m_xml.substr(m_at);
        if (!rest.starts_with("<?") && !rest.starts_with("<!DOCTYPE"))
            return;
        const std::size_t end = rest.find('>');
        if (rest.starts_with("<!DOCTYPE") && rest.substr(0, end).find('[') != rest.npos)
            throw ArchiveError(Kind::EntityDefinition, "document type with definitions");
        const std::string_view tag = tagAt(m_at);
        if (rest.starts_with("<?") && !tag.ends_with('?'))
            refuse("tag that is cut off");
        m_at += tag.size() + 2;
    }
}

void XmlScanner::check()
{
    skipProlog();
    while (m_at < m_xml.size()) {
        const std::size_t next = std::min(m_xml.find('<', m_at), m_xml.size());
        const bool isInLeaf = !m_open.empty() && !isContainer(m_open.back().name);
        if (!isInLeaf && !isBlank(m_xml.substr(m_at, next - m_at)))
            refuse("text outside an element");
        m_at = next;
        if (m_at < m_xml.size())
            takeTag(tagAt(m_at));
    }
    if (!m_isDone)
        refuse("list that ends early");
}

void XmlScanner::takeTag(std::string_view tag)
{
    if (tag.starts_with('!') || tag.starts_with('?'))
        throw ArchiveError(tag.starts_with("!ENTITY") ? Kind::EntityDefinition : Kind::MalformedXml,
            "markup that property lists do not have");
    const std::size_t start = m_at;
    m_at += tag.size() + 2;
    if (tag.starts_with('/')) {
        tag.remove_prefix(1);
        const std::string_view name = tag.substr(0, tag.find_first_of(Blanks));
        if (m_open.empty() || name != m_open.back().name || !isBlank(tag.substr(name.size())))
            refuse("end of an element that is not open");
        const std::size_t contentStart = m_open.back().contentStart;
        checkContent(name, m_xml.substr(contentStart, start - contentStart));
        close(name);
        return;
    }
    const bool isEmpty = tag.ends_with('/');
    if (isEmpty)
        tag.remove_suffix(1);
    const std::string_view name = tag.substr(0, tag.find_first_of(Blanks));
    if (!isKnown(name) || (name != "plist" && !isBlank(tag.substr(name.size()))))
        refuse("element that property lists do not have");
    open(name);
    if (isEmpty) {
        checkContent(name, {});
        close(name);
    }
}

void XmlScanner::open(std::string_view name)
{
    if (m_isDone || (m_open.empty() != (name == "plist")))
        refuse("element outside the list");
    if (++m_count > m_maxElements)
        throw ArchiveError(Kind::TooManyObjects, "list of too many elements");
    if (!m_open.empty()) {
        Element& parent = m_open.back();
        if (!isContainer(parent.name))
            refuse("element inside a value");
        if (parent.name == "plist" && parent.children > 0)
            refuse("second root");
        const bool isKey = name == "key";
        if (isKey != (parent.name == "dict" && !parent.keyWaits))
            refuse("key and value out of turn");
        parent.keyWaits = isKey;
        ++parent.children;
        if (parent.name == "dict" && parent.children > 2 * ArchiveLimits::DictionaryKeys)
            throw ArchiveError(Kind::TooManyObjects, "dictionary of too many keys");
    }
    // The element <plist> itself does not count as a container.
    if (isContainer(name) && m_open.size() > ArchiveLimits::Depth)
        throw ArchiveError(Kind::TooDeep, "containers nested too deep");
    m_open.push_back({ name, m_at });
}

void XmlScanner::close(std::string_view name)
{
    if (m_open.back().keyWaits)
        refuse("key without a value");
    if (name == "plist") {
        if (m_open.back().children == 0)
            refuse("list without a root");
        m_isDone = true;
    }
    m_open.pop_back();
}

void XmlScanner::countMoves(std::string_view text)
{
    for (std::size_t at = text.find('&'); at != text.npos; at = text.find('&', at + 1)) {
        m_movedBytes += text.size() - at;
        if (m_movedBytes > ArchiveLimits::MovedBytes)
            throw ArchiveError(Kind::TooLarge, "texts of too many character references");
    }
}

void XmlScanner::checkContent(std::string_view name, std::string_view content)
{
    XmlContent::check(name, content);
    if (name == "string" || name == "key")
        countMoves(content);
}

void checkEncoding(ByteView list)
{
    if (std::find(list.begin(), list.end(), 0) != list.end())
        throw ArchiveError(Kind::BadText, "list that is not in UTF-8");
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(QByteArrayView(list.data(), std::ssize(list)));
    if (text.isEmpty() || decoder.hasError())
        throw ArchiveError(Kind::BadText, "list that is not in UTF-8");
}

} // namespace

void checkXmlList(ByteView list, std::size_t maxElements)
{
    checkEncoding(list);
    XmlScanner({ reinterpret_cast<const char*>(list.data()), list.size() }, maxElements).check();
}

} // namespace kestrel
