#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <type_traits>
#include <variant>

namespace kestrel {

class ArchiveArray;
class ArchiveDictionary;
class ArchiveObject;

// One value of a keyed archive. Scalars are copied; arrays, dictionaries and objects are shared,
// so that a change made through one copy of the value shows through every other.
class ArchiveValue {
public:
    // In the order of the alternatives of Storage.
    enum class Type {
        Null,
        Boolean,
        Integer,
        Unsigned, // only beyond the largest Integer
        Real,
        String,
        Data,
        Array,
        Dictionary,
        Object
    };

    ArchiveValue() noexcept;
    ArchiveValue(const ArchiveValue& other);
    ArchiveValue(ArchiveValue&& other) noexcept;
    ArchiveValue& operator=(const ArchiveValue& other);
    ArchiveValue& operator=(ArchiveValue&& other) noexcept;
    ~ArchiveValue();

    template <typename T>
    requires std::is_same_v<T, bool> ArchiveValue(T value)
        : ArchiveValue(Boolean { value })
    {
    }
    template <typename T>
    requires(std::is_integral_v<T> && !std::is_same_v<T, bool>) ArchiveValue(T value)
        : ArchiveValue(Integer { static_cast<std::uint64_t>(value), std::is_signed_v<T> })
    {
    }
    ArchiveValue(double value);
    ArchiveValue(QString value);
    ArchiveValue(QByteArray value);
    // A null pointer makes a null value.
    ArchiveValue(std::shared_ptr<ArchiveArray> value);
    ArchiveValue(std::shared_ptr<ArchiveDictionary> value);
    ArchiveValue(std::shared_ptr<ArchiveObject> value);

    [[nodiscard]] Type type() const { return static_cast<Type>(m_storage.index()); }
    [[nodiscard]] bool isNull() const { return type() == Type::Null; }
    [[nodiscard]] bool isString() const { return type() == Type::String; }
    [[nodiscard]] bool isNumber() const;

    // What the framework's numbers and strings answer to the same questions. Integers give their
    // low bits, reals are truncated, strings are read up to the first character that is no digit,
    // everything else is 0.
    [[nodiscard]] std::int64_t toInt64() const;
    [[nodiscard]] std::int32_t toInt32() const;
    [[nodiscard]] std::uint16_t toUInt16() const;
    [[nodiscard]] bool toBool() const;
    [[nodiscard]] double toDouble() const; // 0 unless a number

    [[nodiscard]] QString text() const; // empty unless a string
    [[nodiscard]] QByteArray data() const; // empty unless data
    [[nodiscard]] std::shared_ptr<ArchiveArray> array() const; // null unless an array
    [[nodiscard]] std::shared_ptr<ArchiveDictionary> dictionary() const;
    [[nodiscard]] std::shared_ptr<ArchiveObject> object() const;

    // Numbers by numeric value whatever their type, containers and objects by what they hold.
    friend bool operator==(const ArchiveValue& left, const ArchiveValue& right);

private:
    struct Boolean {
        bool value;
    };
    struct Integer {
        std::uint64_t bits;
        bool isSigned;
    };
    using Storage = std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, QString,
        QByteArray, std::shared_ptr<ArchiveArray>, std::shared_ptr<ArchiveDictionary>,
        std::shared_ptr<ArchiveObject>>;

    explicit ArchiveValue(Boolean value);
    explicit ArchiveValue(Integer value);

    Storage m_storage;
};

} // namespace kestrel
