#include "store/postgres/PostgresParameter.h"

#include "store/ErrorSource.h"

#include <QLocale>

namespace tallyroom {

namespace {

QByteArray nativeText(const QString& text) {
    if (text.contains(QChar(QChar::Null)))
        throw RunError::make(ErrorNumber::conversionFailed, {}, ErrorSource::database);
    return text.toUtf8();
}

std::optional<QByteArray> nativeValue(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null:
    case Variant::Type::Empty:
        return std::nullopt;
    case Variant::Type::Boolean:
    case Variant::Type::Long:
        return QByteArray::number(static_cast<qint64>(value.toDouble()));
    case Variant::Type::Double:
        return QByteArray::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case Variant::Type::Date:
        return Dates::toIso(value.toDate()).toLatin1();
    case Variant::Type::Bytes:
        return "\\x" + value.toBytes().toHex();
    default:
        return nativeText(value.toText());
    }
}

QByteArray escaped(const QByteArray& text, QByteArrayView special) {
    QByteArray result;
    result.reserve(text.size());
    for (const char c : text) {
        if (special.contains(c))
            result += '\\';
        result += c;
    }
    return result;
}

} // namespace

PostgresParameter::PostgresParameter(const Variant& value) : m_text(nativeValue(value)) {}

PostgresParameter::PostgresParameter(const QStringList& texts) {
    QByteArrayList elements;
    for (const QString& text : texts)
        elements << '"' + escaped(nativeText(text), "\\\"") + '"';
    m_text = '{' + elements.join(',') + '}';
}

QByteArray copyText(const std::vector<Row>& rows) {
    QByteArray text;
    for (const Row& row : rows) {
        Q_ASSERT(!row.empty());
        for (const Variant& value : row) {
            const auto native = nativeValue(value);
            text += (native ? escaped(*native, "\\\t\n\r") : QByteArrayLiteral("\\N")) + '\t';
        }
        text.back() = '\n';
    }
    return text;
}

} // namespace tallyroom
