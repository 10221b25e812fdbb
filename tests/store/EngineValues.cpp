#include "tests/store/EngineValues.h"

#include "common/TextOrder.h"

#include <QDateTime>
#include <bit>
#include <cmath>
#include <random>

namespace tallyroom {

using namespace Qt::StringLiterals;

namespace {

const QJsonValue none;

std::mt19937 randomBits(15);

int below(qsizetype limit) {
    return static_cast<int>(randomBits() % static_cast<unsigned>(limit));
}

int between(int least, int most) {
    return least + below(most - least + 1);
}

double anyNumber() {
    const double any = std::bit_cast<double>(randomBits() | std::uint64_t(randomBits()) << 32);
    return std::isfinite(any) ? any : 1;
}

QString textOf(const QStringList& parts, int most) {
    QString text;
    for (int count = below(most + 1); count > 0; --count)
        text += parts[below(parts.size())];
    return text;
}

Rows listed(const QString& values) {
    Rows rows{{none}};
    for (const QString& value : values.split(u'|'))
        rows << QJsonArray{value};
    return rows;
}

const QStringList letters = u"a,A,b,z,Z,0, , ,_,-,\t,é,É,e\u0301,ß,ẞ,İ,ı,ŉ,ſ,K,ǅ,σ,ς,Σ,я,Я,ᾳ,"
                            "ﬁ,\uFFFD,😀,𐐀,𐐨"_s.split(u',');

bool hasCase(const QString& character) {
    return character.toUpper() != character.toLower() || TextOrder::folded(character) != character;
}

} // namespace

Rows texts() {
    Rows rows{{none}};
    QString cased;
    for (char32_t code = '!'; code <= 0x1FFFF; ++code) {
        const QString character = QString::fromUcs4(&code, 1);
        if (!QChar::isSurrogate(code) && hasCase(character))
            cased += character;
        if (cased.size() > 30)
            rows << QJsonArray{std::exchange(cased, {})};
    }
    for (int i = 0; i < 500; ++i)
        rows << QJsonArray{textOf(letters, 8)};
    return rows;
}

Rows textPairs() {
    Rows rows = texts();
    for (QJsonArray& row : rows)
        row << TextOrder::folded(row[0].toString());
    for (int i = 0; i < 3000; ++i) {
        const QString text = textOf(letters, 3);
        const QStringList others{text.toUpper(), text.toLower(), text + u' ', textOf(letters, 3)};
        rows << QJsonArray{text, others[below(4)], textOf(letters, 3)};
    }
    return rows;
}

// Units above 16 bits count as two for Like in files, and as one character here.
Rows patterns() {
    const QStringList characters = u"a,A,b,-,1,.,^,$,\\,é,É,ſ,K, ,\n"_s.split(u',') << u","_s;
    const QStringList signs = characters + u"*,*,?,#,[,[,],],!,a-c,[!,é-Ü"_s.split(u',');
    Rows rows = textPairs();
    rows << QJsonArray{none, none} << QJsonArray{u""_s, none} << QJsonArray{u"a"_s, u"[!]"_s};
    for (int i = 0; i < 4000; ++i)
        rows << QJsonArray{textOf(characters, 4), textOf(signs, 5)};
    return rows;
}

Rows textParts() {
    Rows rows{{none, 1, 1}, {u"ab"_s, none, 1}, {u"ab"_s, 1, none}};
    for (int start = -5; start <= 5; ++start) {
        for (int count = -1; count <= 5; ++count)
            rows << QJsonArray{u"äbc"_s, start, count};
    }
    for (const int far : {-1000, 2147483647})
        rows << QJsonArray{u"abc"_s, far, 2147483647} << QJsonArray{u"abc"_s, 2, far};
    return rows;
}

Rows numberTexts() {
    Rows rows = listed(u"1,234|-12,345,678.5|1234,567|1,23|1,234,56|1e308|1e309|-1e309|5e-324|"
                       "1.7976931348623157e308|1.7976931348623159e308|3e-324|2e-324|0.1e310|"
                       "0.00e-999999|1e999999999999|1e-999999999999|inf|nan|Infinity|0x10|1d5|"
                       "\u00A05\u3000|\u200B5|٣|９|1_0|123456789012345678901234567890|1.25e+05|"
                       "1e\u22125|\n7\t"_s);
    QStringList words{QString()};
    for (qsizetype at = 0; words[at].size() < 4; ++at) {
        for (const QChar sign : u"15,.eE+-\u2212 "_s)
            words << words[at] + sign;
    }
    for (const QString& word : std::as_const(words))
        rows << QJsonArray{word};
    for (int i = 0; i < 1000; ++i)
        rows << QJsonArray{QString::number(anyNumber(), 'g', between(1, 20))};
    return rows;
}

Rows numbers() {
    Rows rows =
        listed(u"0|-0|0.5|1.5|2.5|-0.5|-1.5|2147483647.5|2147483647.4|-2147483648.5|-2147483648.6|"
               "1e15|999999999999999|1e-4|9.9999e-5|999999999999999.5|99999999999999.95|5e-324|"
               "1.7e308|-657435|-657434.99999999|2958465.99999|2958465.999995"_s);
    for (qsizetype i = 1; i < rows.size(); ++i)
        rows[i][0] = rows[i][0].toString().toDouble();
    for (int i = 0; i < 1500; ++i)
        rows << QJsonArray{anyNumber()} << QJsonArray{between(-99999, 99999) / 8.0}
             << QJsonArray{between(-60'000'000, 300'000'000) / 100.0 + below(90000) / 86400.0};
    return rows;
}

Rows wholeNumbers() {
    return {{0}, {-7}, {999999999999999LL}, {1000000000000000LL}, {-9223372036854775807LL}};
}

Rows dates() {
    Rows rows = listed(u"0099-12-31 23:59:59|1899-12-30 12:00:00|1899-12-30 00:00:00|"
                       "1899-12-29 23:59:59|9999-12-31 23:59:59"_s);
    for (int i = 0; i < 2000; ++i)
        rows << QJsonArray{QDateTime(QDate(between(100, 9999), 1, 1).addDays(below(365)),
                                     QTime(below(3) * 12, 0).addSecs(below(2) * below(86400)))
                               .toString(u"yyyy-MM-dd HH:mm:ss"_s)};
    return rows;
}

Rows dateTexts() {
    const QStringList parts =
        u"1|2|02|12|13|30|31|29|99|100|1899|2020|9999|10000|00007|/|/|/|-|-| | | | |,|, |jan|"
        "January|FEB|sept|may|am|PM|a|p|:|:|.|5pm|12:30|7.5|24:00|13 pm|1:2:3 a|:60|\u00A0|\n|é|"
        "2/29/2019|2/29/1900|2/29/2000|99999999999"_s.split(u'|');
    Rows rows{{none}};
    for (int i = 0; i < 6000; ++i)
        rows << QJsonArray{textOf(parts, 7)};
    for (int i = 0; i < 1000; ++i)
        rows << QJsonArray{u"%1%4%2%4%3"_s.arg(below(40))
                               .arg(below(40))
                               .arg(below(2) * 2000 + below(101))
                               .arg(u"/- ,"_s[below(4)])};
    return rows;
}

} // namespace tallyroom
