#include "common/Dates.h"

#include "common/RunError.h"

#include <QTime>
#include <cmath>

namespace tallyroom::Dates {

namespace {

constexpr double secondsPerDay = 86400.0;

QDate dayZero() {
    return {1899, 12, 30};
}

QString twoDigits(int value) {
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

QString monthName(int month, bool full) {
    static constexpr const char16_t* names[] = {
        u"January", u"February", u"March",     u"April",   u"May",      u"June",
        u"July",    u"August",   u"September", u"October", u"November", u"December"};
    const QString name = QString::fromUtf16(names[month - 1]);
    return full ? name : name.left(3);
}

QString dayName(int dayOfWeek, bool full) {
    static constexpr const char16_t* names[] = {u"Monday", u"Tuesday",  u"Wednesday", u"Thursday",
                                                u"Friday", u"Saturday", u"Sunday"};
    const QString name = QString::fromUtf16(names[dayOfWeek - 1]);
    return full ? name : name.left(3);
}

QString timeText(QTime time) {
    const int hour = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    return QStringLiteral("%1:%2:%3 %4")
        .arg(QString::number(hour), twoDigits(time.minute()), twoDigits(time.second()),
             time.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM"));
}

QString dateText(QDate day) {
    return QStringLiteral("%1/%2/%3").arg(day.month()).arg(day.day()).arg(day.year());
}

// Walks a picture token by token. The state it carries is what it takes to tell months from
// minutes.
class Picture {
public:
    Picture(const QDateTime& moment, const QString& picture)
        : m_date(moment.date()), m_time(moment.time()), m_picture(picture),
          m_halfDay(picture.contains(QLatin1String("am/pm"), Qt::CaseInsensitive)) {}

    QString text() {
        while (m_at < m_picture.size())
            m_text += takeMark() ? mark() : takeToken();
        return m_text;
    }

private:
    bool takeMark() const {
        return m_picture.mid(m_at, 5).compare(QLatin1String("am/pm"), Qt::CaseInsensitive) == 0;
    }
    QString mark() {
        const QString both = m_picture.mid(m_at, 5);
        m_at += 5;
        return m_time.hour() < 12 ? both.left(2) : both.right(2);
    }
    QString takeToken() {
        const QChar letter = m_picture[m_at].toLower();
        const qsizetype start = m_at;
        while (m_at < m_picture.size() && m_picture[m_at].toLower() == letter)
            ++m_at;
        return token(letter, static_cast<int>(m_at - start), m_picture.mid(start, m_at - start));
    }
    QString token(QChar letter, int length, const QString& literal) {
        switch (letter.unicode()) {
        case u'd':
            return day(length);
        case u'm':
            return std::exchange(m_afterHour, false) ? number(m_time.minute(), length)
                                                     : month(length);
        case u'y':
            return length > 2 ? QStringLiteral("%1").arg(m_date.year(), 4, 10, QLatin1Char('0'))
                              : twoDigits(m_date.year() % 100);
        case u'h':
            m_afterHour = true;
            return number(hour(), length);
        case u'n':
            return number(m_time.minute(), length);
        case u's':
            return number(m_time.second(), length);
        default:
            return literal;
        }
    }
    int hour() const {
        if (!m_halfDay)
            return m_time.hour();
        return m_time.hour() % 12 == 0 ? 12 : m_time.hour() % 12;
    }
    QString day(int length) const {
        return length > 2 ? dayName(m_date.dayOfWeek(), length > 3) : number(m_date.day(), length);
    }
    QString month(int length) const {
        return length > 2 ? monthName(m_date.month(), length > 3) : number(m_date.month(), length);
    }
    static QString number(int value, int length) {
        return length > 1 ? twoDigits(value) : QString::number(value);
    }

    QDate m_date;
    QTime m_time;
    QString m_picture;
    QString m_text;
    qsizetype m_at = 0;
    bool m_halfDay;
    bool m_afterHour = false;
};

// Writes digits over those that the text has there.
void putDigits(QString& text, qsizetype at, int count, int number) {
    for (QChar* place = text.data() + at + count; count > 0; --count, number /= 10)
        *--place = QChar(static_cast<char16_t>(u'0' + number % 10));
}

// "mm/dd/yyyy"
QString monthDayYear(QDate day) {
    QString text = QStringLiteral("00/00/0000");
    putDigits(text, 0, 2, day.month());
    putDigits(text, 3, 2, day.day());
    putDigits(text, 6, 4, day.year());
    return text;
}

// The number that the digits at a place are, or −1.
int digitsAt(const QString& text, qsizetype from, qsizetype count) {
    int number = 0;
    for (qsizetype at = from; at < from + count; ++at) {
        const int digit = text.at(at).unicode() - u'0';
        if (digit < 0 || digit > 9)
            return -1;
        number = number * 10 + digit;
    }
    return number;
}

// "YYYY-MM-DD HH:MM:SS" to the letter, as the store writes it: an invalid moment for all else.
QDateTime fullIso(const QString& text) {
    if (text.size() != 19 || text.at(4) != u'-' || text.at(7) != u'-' || text.at(13) != u':' ||
        text.at(16) != u':')
        return {};
    const QDate day(digitsAt(text, 0, 4), digitsAt(text, 5, 2), digitsAt(text, 8, 2));
    const QTime time(digitsAt(text, 11, 2), digitsAt(text, 14, 2), digitsAt(text, 17, 2));
    return day.isValid() && time.isValid() ? QDateTime(day, time, Qt::UTC) : QDateTime();
}

// What other programs write: the day alone, the time in another form.
QDateTime anyIso(const QString& text) {
    const QDate day = QDate::fromString(text.left(10), Qt::ISODate);
    const QTime time =
        text.size() == 10 ? QTime(0, 0) : QTime::fromString(text.mid(11), Qt::ISODate);
    return day.isValid() && time.isValid() ? QDateTime(day, time, Qt::UTC) : QDateTime();
}

} // namespace

Date fromQDate(QDate day) {
    return {static_cast<double>(dayZero().daysTo(day))};
}

Date fromQDateTime(const QDateTime& moment) {
    const double days = fromQDate(moment.date()).serial;
    const int seconds = moment.time().msecsSinceStartOfDay() / 1000;
    const double time = seconds / secondsPerDay;
    return {days < 0 ? days - time : days + time};
}

// Half a second before the end rounds to the year 10000.
bool isInRange(Date date) {
    constexpr double beforeYear100 = -657435;
    constexpr double year10000 = 2958466;
    return date.serial > beforeYear100 && date.serial < year10000 - 0.5 / secondsPerDay;
}

QDateTime toQDateTime(Date date) {
    if (!isInRange(date))
        throw RunError::make(ErrorNumber::overflow);
    const double whole = std::trunc(date.serial);
    const auto seconds = std::llround(std::abs(date.serial - whole) * secondsPerDay);
    constexpr int secondsOfDay = 86400; // which the last half second of a day is rounded to
    const QDate day = dayZero().addDays(static_cast<qint64>(whole) + seconds / secondsOfDay);
    const int time = static_cast<int>(seconds % secondsOfDay);
    return QDateTime(day, QTime::fromMSecsSinceStartOfDay(time * 1000), Qt::UTC);
}

QDate dayOf(Date date) {
    return toQDateTime(date).date();
}

Date now() {
    return fromQDateTime(QDateTime::currentDateTime());
}

Date today() {
    return fromQDate(QDate::currentDate());
}

QString toText(Date date) {
    const QDateTime moment = toQDateTime(date);
    if (moment.date() == dayZero())
        return timeText(moment.time());
    const QString day = dateText(moment.date());
    return moment.time() == QTime(0, 0) ? day : day + QLatin1Char(' ') + timeText(moment.time());
}

QString format(Date date, const QString& picture) {
    const QDateTime moment = toQDateTime(date);
    if (picture == QLatin1String("mm/dd/yyyy"))
        return monthDayYear(moment.date());
    return Picture(moment, picture).text();
}

QString toIso(Date date) {
    const QDateTime moment = toQDateTime(date);
    const QTime time = moment.time();
    int year = 0;
    int month = 0;
    int day = 0;
    moment.date().getDate(&year, &month, &day);
    QString text = QStringLiteral("0000-00-00 00:00:00");
    putDigits(text, 0, 4, year);
    putDigits(text, 5, 2, month);
    putDigits(text, 8, 2, day);
    putDigits(text, 11, 2, time.hour());
    putDigits(text, 14, 2, time.minute());
    putDigits(text, 17, 2, time.second());
    return text;
}

std::optional<Date> fromIso(const QString& text) {
    const QDateTime full = fullIso(text);
    const QDateTime moment = full.isValid() ? full : anyIso(text);
    if (!moment.isValid())
        return std::nullopt;
    const Date date = fromQDateTime(moment);
    return isInRange(date) ? std::optional(date) : std::nullopt;
}

} // namespace tallyroom::Dates
