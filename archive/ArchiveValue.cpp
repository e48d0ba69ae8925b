#include "archive/ArchiveValue.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kestrel {

namespace {

using Type = ArchiveValue::Type;

constexpr double TwoTo63 = 9223372036854775808.0;

std::int64_t truncated(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= TwoTo63)
        return std::numeric_limits<std::int64_t>::max();
    if (value < -TwoTo63)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

QStringView withoutLeadingBlanks(QStringView text)
{
    const auto first
        = std::find_if_not(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
    return text.sliced(first - text.begin());
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Reads blanks, a sign and digits, and ignores the rest. The result is clamped to the range of
// `Number`.
template <typename Number> Number leadingNumber(QStringView text)
{
    text = withoutLeadingBlanks(text);
    const bool isNegative = text.startsWith(u'-');
    if (isNegative || text.startsWith(u'+'))
        text = text.sliced(1);
    using Limits = std::numeric_limits<Number>;
    Number value = 0; // negative: the negative range is the longer one
    for (const QChar c : text) {
        if (!isDigit(c))
            break;
        const auto digit = static_cast<Number>(c.unicode() - u'0');
        if (value < (Limits::min() + digit) / 10)
            return isNegative ? Limits::min() : Limits::max();
        value = static_cast<Number>(value * 10 - digit);
    }
    if (isNegative)
        return value;
    return value == Limits::min() ? Limits::max() : static_cast<Number>(-value);
}

// True for blanks, a sign and zeros before a digit from 1 to 9 or one of the letters Y, y, T, t.
bool isTrueText(QStringView text)
{
    text = withoutLeadingBlanks(text);
    if (text.startsWith(u'-') || text.startsWith(u'+'))
        text = text.sliced(1);
    while (text.startsWith(u'0'))
        text = text.sliced(1);
    return !text.isEmpty() && QStringView(u"123456789YyTt").contains(text.front());
}

// For numbers only. It compares a real with an integer exactly, not through a rounded double.
bool sameNumber(const ArchiveValue& left, const ArchiveValue& right)
{
    if (left.type() == Type::Real && right.type() == Type::Real) {
        const double a = left.toDouble();
        const double b = right.toDouble();
        return a == b || (std::isnan(a) && std::isnan(b));
    }
    if (left.type() == Type::Real)
        return sameNumber(right, left);
    if (right.type() == Type::Real) {
        const double real = right.toDouble();
        if (left.type() == Type::Unsigned)
            return real >= TwoTo63 && real < 2 * TwoTo63
                && static_cast<std::uint64_t>(real) == static_cast<std::uint64_t>(left.toInt64());
        return real >= -TwoTo63 && real < TwoTo63 && std::trunc(real) == real
            && static_cast<std::int64_t>(real) == left.toInt64();
    }
    return (left.type() == Type::Unsigned) == (right.type() == Type::Unsigned)
        && left.toInt64() == right.toInt64();
}

template <typename Pointer> bool sameContent(const Pointer& left, const Pointer& right)
{
    return left == right || *left == *right;
}

} // namespace

ArchiveValue::ArchiveValue() noexcept = default;
ArchiveValue::ArchiveValue(const ArchiveValue& other) = default;
ArchiveValue::ArchiveValue(ArchiveValue&& other) noexcept = default;
ArchiveValue& ArchiveValue::operator=(const ArchiveValue& other) = default;
ArchiveValue& ArchiveValue::operator=(ArchiveValue&& other) noexcept = default;
ArchiveValue::~ArchiveValue() = default;

ArchiveValue::ArchiveValue(Boolean value)
    : m_storage(value.value)
{
}

ArchiveValue::ArchiveValue(Integer value)
{
    if (value.isSigned || !(value.bits >> 63))
        m_storage = static_cast<std::int64_t>(value.bits);
    else
        m_storage = value.bits;
}

ArchiveValue::ArchiveValue(double value)
    : m_storage(value)
{
}

ArchiveValue::ArchiveValue(QString value)
    : m_storage(std::move(value))
{
}

ArchiveValue::ArchiveValue(QByteArray value)
    : m_storage(std::move(value))
{
}

ArchiveValue::ArchiveValue(std::shared_ptr<ArchiveArray> value)
{
    if (value)
        m_storage = std::move(value);
}

ArchiveValue::ArchiveValue(std::shared_ptr<ArchiveDictionary> value)
{
    if (value)
        m_storage = std::move(value);
}

ArchiveValue::ArchiveValue(std::shared_ptr<ArchiveObject> value)
{
    if (value)
        m_storage = std::move(value);
}

bool ArchiveValue::isNumber() const
{
    return type() == Type::Boolean || type() == Type::Integer || type() == Type::Unsigned
        || type() == Type::Real;
}

std::int64_t ArchiveValue::toInt64() const
{
    switch (type()) {
    case Type::Boolean:
        return std::get<bool>(m_storage) ? 1 : 0;
    case Type::Integer:
        return std::get<std::int64_t>(m_storage);
    case Type::Unsigned:
        return static_cast<std::int64_t>(std::get<std::uint64_t>(m_storage));
    case Type::Real:
        return truncated(std::get<double>(m_storage));
    case Type::String:
        return leadingNumber<std::int64_t>(std::get<QString>(m_storage));
    default:
        return 0;
    }
}

std::int32_t ArchiveValue::toInt32() const
{
    if (isString())
        return leadingNumber<std::int32_t>(std::get<QString>(m_storage));
    return static_cast<std::int32_t>(toInt64());
}

std::uint16_t ArchiveValue::toUInt16() const
{
    return static_cast<std::uint16_t>(toInt32());
}

bool ArchiveValue::toBool() const
{
    if (type() == Type::Real)
        return std::get<double>(m_storage) != 0;
    if (isString())
        return isTrueText(std::get<QString>(m_storage));
    return toInt64() != 0;
}

double ArchiveValue::toDouble() const
{
    switch (type()) {
    case Type::Unsigned:
        return static_cast<double>(std::get<std::uint64_t>(m_storage));
    case Type::Real:
        return std::get<double>(m_storage);
    case Type::String:
        return 0;
    default:
        return static_cast<double>(toInt64());
    }
}

QString ArchiveValue::text() const
{
    const auto* text = std::get_if<QString>(&m_storage);
    return text ? *text : QString();
}

QByteArray ArchiveValue::data() const
{
    const auto* data = std::get_if<QByteArray>(&m_storage);
    return data ? *data : QByteArray();
}

std::shared_ptr<ArchiveArray> ArchiveValue::array() const
{
    const auto* array = std::get_if<std::shared_ptr<ArchiveArray>>(&m_storage);
    return array ? *array : nullptr;
}

std::shared_ptr<ArchiveDictionary> ArchiveValue::dictionary() const
{
    const auto* dictionary = std::get_if<std::shared_ptr<ArchiveDictionary>>(&m_storage);
    return dictionary ? *dictionary : nullptr;
}

std::shared_ptr<ArchiveObject> ArchiveValue::object() const
{
    const auto* object = std::get_if<std::shared_ptr<ArchiveObject>>(&m_storage);
    return object ? *object : nullptr;
}

bool operator==(const ArchiveValue& left, const ArchiveValue& right)
{
    if (left.isNumber() && right.isNumber())
        return sameNumber(left, right);
    if (left.type() != right.type())
        return false;
    switch (left.type()) {
    case Type::String:
        return left.text() == right.text();
    case Type::Data:
        return left.data() == right.data();
    case Type::Array:
        return sameContent(left.array(), right.array());
    case Type::Dictionary:
        return sameContent(left.dictionary(), right.dictionary());
    case Type::Object:
        return sameContent(left.object(), right.object());
    default:
        return true;
    }
}

} // namespace kestrel
