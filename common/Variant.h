// The value type of the late-bound world: what a database field or a host's property holds.
#pragma once

#include "common/Dates.h"

#include <QByteArray>
#include <QString>
#include <concepts>
#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

namespace tallyroom {

class ObjectRef;
class Variant;

// Elements in order; lowerBound is the index of the first. Only an array of one dimension has
// positions that code may address.
struct VariantArray {
    std::vector<Variant> elements;
    int lowerBound = 0;
    int dimensions = 1;
};

// Empty (never set) and Null (no value known) differ. Conversions carry the old run time's rules
// and raise RunError 13 (type mismatch), 6 (overflow) or 94 (invalid use of Null).
class Variant {
public:
    enum class Type { Empty, Null, Boolean, Long, Double, Date, Text, Object, Bytes, Array };

    Variant() = default;
    static Variant null();
    explicit Variant(std::same_as<bool> auto value) : m_value(value) {}
    Variant(std::int32_t value) : m_value(value) {}
    Variant(double value) : m_value(value) {}
    Variant(Date value) : m_value(value) {}
    Variant(QString value) : m_value(std::move(value)) {}
    Variant(const char16_t* value) : m_value(QString::fromUtf16(value)) {}
    Variant(QByteArray value) : m_value(std::move(value)) {}
    Variant(const ObjectRef& value);
    Variant(VariantArray value);

    Type type() const { return static_cast<Type>(m_value.index()); }
    bool isEmpty() const { return type() == Type::Empty; }
    bool isNull() const { return type() == Type::Null; }
    bool isNumber() const { return type() == Type::Long || type() == Type::Double; }

    QString toText() const;      // Null raises 94; Empty is ""
    QString textOrEmpty() const; // as joining texts does: Null and Empty are ""
    double toDouble() const;     // text must be wholly a number
    std::int32_t toLong() const; // rounds half to even
    bool toBoolean() const;      // "True", "False" in any case, or a number
    Date toDate() const;         // a date text, or a number as a day serial; 6 out of range
    ObjectRef toObject() const;  // 424 when it is no object; a null reference is an object
    const QByteArray& toBytes() const;
    const VariantArray& toArray() const;

    // Same type and same value, texts letter for letter. A Null equals nothing, as in a comparison.
    bool sameValue(const Variant& other) const;

private:
    struct NullValue {};
    std::variant<std::monostate, NullValue, bool, std::int32_t, double, Date, QString,
                 std::shared_ptr<const ObjectRef>, QByteArray, std::shared_ptr<const VariantArray>>
        m_value;
};

// Rounds to the nearest whole number, halves to the even one; raises 6 outside 32 bits.
std::int32_t roundToLong(double value);

// A number as the old run time writes it: 15 significant digits, no superfluous zeros.
QString numberText(double value);

// The number that a text wholly is, blanks around it allowed; nothing otherwise.
std::optional<double> parseNumber(const QString& text);

} // namespace tallyroom
