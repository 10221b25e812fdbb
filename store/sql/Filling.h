// Putting statements together from an engine's templates and their parts.
#pragma once

#include <QStringList>

namespace tallyroom::sql {

// Appends the template to `out`; $$ gives a dollar sign, and what its marks $1 to $9 stand for is
// appended by `part`, which is given their position from 0.
template<class Part>
void appendFilled(QString& out, QStringView text, const Part& part) {
    for (; !text.isEmpty(); text = text.sliced(1)) {
        if (text.front() != u'$') {
            out += text.front();
            continue;
        }
        text = text.sliced(1);
        if (text.front() == u'$')
            out += u'$';
        else
            part(text.front().digitValue() - 1);
    }
}

inline QString filled(const char16_t* text, const QStringList& parts) {
    QString result;
    appendFilled(result, text, [&](int at) { result += parts.at(at); });
    return result;
}

template<class Items, class TextOf>
QString list(const Items& items, const TextOf& textOf) {
    QStringList texts;
    for (const auto& item : items)
        texts << textOf(item);
    return texts.join(QLatin1String(", "));
}

inline QString rowOf(const QString& values) {
    return QStringLiteral("VALUES (%1)").arg(values);
}

} // namespace tallyroom::sql
