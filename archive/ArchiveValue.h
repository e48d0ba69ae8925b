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

// One value of a keyed archive. A copy of a scalar is independent. Copies of an array, dictionary
// or object share it: a change through one of them shows through all.
class ArchiveValue {
public:
    // In the order of the alternatives of Storage.
    enum class Type {
        Null,
        Boolean,
        Integer,
        Unsigned, // only for numbers above the largest Integer
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
    // A null pointer becomes a null value.
    ArchiveValue(std::shared_ptr<ArchiveArray> value);
    ArchiveValue(std::shared_ptr<ArchiveDictionary> value);
    ArchiveValue(std::shared_ptr<ArchiveObject> value);

    [[nodiscard]] Type type() const { return static_cast<Type>(m_storage.index()); }
    [[nodiscard]] bool isNull() const { return type() == Type::Null; }
    [[nodiscard]] bool isString() const { return type() == Type::String; }
    [[nodiscard]] bool isNumber() const;

    // The answers that NSNumber and NSString give. Integers give their low bits, reals are
    // truncated, strings are read up to the first character that is not a digit; other values are
    // 0.
    [[nodiscard]] std::int64_t toInt64() const;
    [[nodiscard]] std::int32_t toInt32() const;
    [[nodiscard]] std::uint16_t toUInt16() const;
    [[nodiscard]] bool toBool() const;
    [[nodiscard]] double toDouble() const; // 0 if it is not a number

    [[nodiscard]] QString text() const; // empty if it is not a string
    [[nodiscard]] QByteArray data() const; // empty if it is not data
    [[nodiscard]] std::shared_ptr<ArchiveArray> array() const; // null if it is not an array
    [[nodiscard]] std::shared_ptr<ArchiveDictionary> dictionary() const;
    [[nodiscard]] std::shared_ptr<ArchiveObject> object() const;

    // Compares numbers by numeric value whatever their type, containers and objects by content.
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
