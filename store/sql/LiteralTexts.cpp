#include "store/sql/LiteralTexts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace tallyroom::sql {

namespace {

bool needsEscape(QChar c) {
    return c < u' ' || c == u'"' || c == u'\\';
}

// Codes hardly ever need more than the quotes.
void appendJson(QString& out, const QString& text) {
    if (std::any_of(text.begin(), text.end(), needsEscape)) {
        const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
        out += QString::fromUtf8(array.sliced(1, array.size() - 2));
        return;
    }
    out += u'"';
    out += text;
    out += u'"';
}

} // namespace

QString quoted(QChar quote, const QString& text) {
    if (!text.contains(quote))
        return quote + text + quote;
    QString doubled = text;
    doubled.replace(quote, QString(2, quote));
    return quote + doubled + quote;
}

QString realText(double value) {
    const QString text = QString::number(value, 'g', 17);
    const bool whole = !text.contains(u'.') && !text.contains(u'e');
    return whole ? text + QStringLiteral(".0") : text;
}

QString jsonArray(const QStringList& texts) {
    QString json;
    for (const QString& text : texts) {
        json += json.isEmpty() ? u'[' : u',';
        appendJson(json, text);
    }
    json += u']';
    return json;
}

} // namespace tallyroom::sql
