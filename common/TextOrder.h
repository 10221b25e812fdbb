// When two texts count as the same, and which comes first: one rule for all users, whatever their
// locale, for statements and for what is ordered in memory.
#pragma once

#include <QStringList>
#include <QUtf8StringView>

namespace tallyroom::TextOrder {

// In all of these, case and blanks at the end do not count, accents do. Characters outside ASCII
// never match a letter of ASCII: the Kelvin sign is no K. No text is taken apart or composed, so an
// accent written as a character of its own makes another text.

// Texts are the same where these are: each character folded as Unicode folds single characters.
QString folded(QStringView text);
bool isSame(QStringView left, QStringView right);

// Below, at or above 0 as the left text comes before, with or after the right one in the root
// order of the Unicode collation: blanks and punctuation, digits, letters; Çelik lies beside Celik.
// 0 for the same texts only. Raises 7 if the collation cannot be had, at the first call or never.
int compare(QStringView left, QStringView right);
int compare(QUtf8StringView left, QUtf8StringView right);

// Texts that together match, by the case of the letters A to Z alone, whatever is the same as this
// one. They double with each letter outside ASCII; none are given where there would be more than a
// thousand.
QStringList spellings(const QString& text);

QString version(); // of the library that knows the collation: "72.1"

bool isAscii(QStringView text);

} // namespace tallyroom::TextOrder
