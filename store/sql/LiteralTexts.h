// How values are written in an engine's text.
#pragma once

#include <QStringList>

namespace tallyroom::sql {

// Between two quotes, those inside doubled.
QString quoted(QChar quote, const QString& text);

// All digits, and always a point or an exponent: a number without is a whole one to an engine.
QString realText(double value);

QString jsonArray(const QStringList& texts);

} // namespace tallyroom::sql
