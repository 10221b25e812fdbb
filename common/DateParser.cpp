// The parser's odd readings included: "2/30" is February 1930, "7.5" is five minutes past seven.
#include "common/DateParser.h"

#include <QRegularExpression>
#include <QTime>
#include <array>
#include <vector>

namespace tallyroom::Dates {

namespace {

// What is left of a date text once the time of day has been taken out.
struct DayParts {
    std::vector<int> numbers;
    int month = 0; // of a month name, 0 without one
};

int fullYear(int year) {
    if (year < 30)
        return 2000 + year;
    return year < 100 ? 1900 + year : year;
}

std::optional<QDate> dayFrom(int year, int month, int day) {
    if (year > 9999 || !QDate::isValid(fullYear(year), month, day))
        return std::nullopt;
    return QDate(fullYear(year), month, day);
}

using Candidates = std::vector<std::optional<QDate>>;

std::optional<QDate> firstValid(const Candidates& candidates) {
    for (const auto& candidate : candidates) {
        if (candidate)
            return candidate;
    }
    return std::nullopt;
}

std::optional<QDate> dayWithMonthName(const DayParts& parts) {
    const int thisYear = QDate::currentDate().year();
    const auto& n = parts.numbers;
    if (n.size() == 1)
        return firstValid({dayFrom(thisYear, parts.month, n[0]), dayFrom(n[0], parts.month, 1)});
    if (n.size() == 2)
        return firstValid({dayFrom(n[1], parts.month, n[0]), dayFrom(n[0], parts.month, n[1])});
    return std::nullopt;
}

std::optional<QDate> dayOfNumbers(const std::vector<int>& n) {
    const int thisYear = QDate::currentDate().year();
    if (n.size() == 2)
        return firstValid({dayFrom(thisYear, n[0], n[1]), dayFrom(thisYear, n[1], n[0]),
                           dayFrom(n[1], n[0], 1), dayFrom(n[0], n[1], 1)});
    if (n.size() == 3)
        return firstValid({dayFrom(n[2], n[0], n[1]), dayFrom(n[2], n[1], n[0]),
                           dayFrom(n[0], n[1], n[2]), dayFrom(n[1], n[0], n[2])});
    return std::nullopt;
}

int monthOf(const QString& word) {
    static const std::array<QString, 12> names = {
        QStringLiteral("january"), QStringLiteral("february"), QStringLiteral("march"),
        QStringLiteral("april"),   QStringLiteral("may"),      QStringLiteral("june"),
        QStringLiteral("july"),    QStringLiteral("august"),   QStringLiteral("september"),
        QStringLiteral("october"), QStringLiteral("november"), QStringLiteral("december")};
    const QString lower = word.toLower();
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (lower == names[i] || lower == names[i].left(3))
            return static_cast<int>(i) + 1;
    }
    return 0;
}

// Takes the time of day out of the text. False when there is one that no clock shows.
bool takeTime(QString& text, std::optional<QTime>& time) {
    static const QRegularExpression pattern(
        QStringLiteral(
            "(?:^|(?<=\\s))(?:(\\d{1,2})\\s*[:.]\\s*(\\d{1,2})(?:\\s*[:.]\\s*(\\d{1,2}))?"
            "\\s*(am|pm|a|p)?|(\\d{1,2})\\s*(am|pm|a|p))(?=$|\\s)"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return true;
    const bool hourOnly = !match.captured(5).isEmpty();
    int hour = (hourOnly ? match.captured(5) : match.captured(1)).toInt();
    const QString mark = (hourOnly ? match.captured(6) : match.captured(4)).toLower();
    if (hour <= 12 && !mark.isEmpty())
        hour = hour % 12 + (mark.startsWith(QLatin1Char('p')) ? 12 : 0);
    const QTime found(hour, match.captured(2).toInt(), match.captured(3).toInt());
    if (!QTime::isValid(found.hour(), found.minute(), found.second()))
        return false;
    time = found;
    text = (text.left(match.capturedStart()) + QLatin1Char(' ') + text.mid(match.capturedEnd()))
               .trimmed();
    return true;
}

// Splits what remains into at most three parts, one of which may be a month name.
std::optional<DayParts> splitDay(const QString& text) {
    static const QRegularExpression whole(
        QStringLiteral("^[^\\W_]+(?:\\s*[/,-]\\s*[^\\W_]+|\\s+[^\\W_]+){0,2}$"));
    static const QRegularExpression part(QStringLiteral("\\d+|[^\\W\\d_]+"));
    if (!whole.match(text).hasMatch())
        return std::nullopt;
    DayParts parts;
    auto found = part.globalMatch(text);
    while (found.hasNext()) {
        const QString word = found.next().captured();
        bool isNumber = false;
        const int number = word.toInt(&isNumber);
        if (isNumber) {
            parts.numbers.push_back(number);
            continue;
        }
        const int month = monthOf(word);
        if (month == 0 || parts.month != 0)
            return std::nullopt;
        parts.month = month;
    }
    return parts;
}

} // namespace

std::optional<Date> parse(const QString& text) {
    QString rest = text.trimmed();
    std::optional<QTime> time;
    if (!takeTime(rest, time))
        return std::nullopt;
    if (rest.isEmpty()) {
        if (!time)
            return std::nullopt;
        return fromQDateTime(QDateTime(QDate(1899, 12, 30), *time, Qt::UTC));
    }
    const auto parts = splitDay(rest);
    if (!parts)
        return std::nullopt;
    const auto day = parts->month != 0 ? dayWithMonthName(*parts) : dayOfNumbers(parts->numbers);
    if (!day)
        return std::nullopt;
    return fromQDateTime(QDateTime(*day, time.value_or(QTime(0, 0)), Qt::UTC));
}

bool isDate(const QString& text) {
    return parse(text).has_value();
}

} // namespace tallyroom::Dates
