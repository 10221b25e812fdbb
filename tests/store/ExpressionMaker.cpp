#include "tests/store/ExpressionMaker.h"

namespace tallyroom {

namespace {

const MadeTable tables[] = {
    {u"TimeHistory",
     {u"thist_emp", u"rule", u"thist_record_type", u"Notes"},
     {u"t15", u"t20", u"tlyrAccepted", u"tlyrDeclined"},
     2,
     {u"thist_date", u"shift_date", u"thist_start_time"}},
    {u"Employee", {u"emp_code", u"emp_name", u"emp_dept"}, {u"Seniority"}, 1, {u"sendate"}},
};

// What is the same in several spellings, sorts otherwise than its bytes, or reads as a number or
// date.
constexpr const char16_t* madeTexts[] = {
    u"a",  u"A",   u"a ",   u"b",      u"B",   u"ab",         u"aB ",        u"a-b",     u"é",
    u"É",  u"É ",  u"e",    u"\u212A", u"k",   u"ß",          u"ss",         u"ÿ",       u"Ÿ",
    u"ς",  u"Σ",   u"日本", u"ж",      u"Ж",   u"\U00010400", u"\U00010428", u"e\u0301", u"İ",
    u"12", u"1.5", u"-3",   u"1,000",  u"1e3", u"2/3/2020",   u"12:30",      u"Jan 5",   u"7 ",
    u"",   u" ",   u" a",   u"a*",     u"[x]", u"100%",       u"o\u2019x",   u"x\ty",    u"1/2"};
constexpr const char16_t* patterns[] = {u"*",     u"a*", u"?*",    u"*é*", u"[a-c]*",
                                        u"[!a]*", u"#*", u"*[x]*", u"k",   u""};
constexpr const char16_t* madeDates[] = {
    u"1/1/100",    u"6/5/1850 6:00 AM",   u"12/29/1899 6:00 PM",
    u"12/30/1899", u"12/30/1899 6:00 AM", u"12/31/1899",
    u"1/5/1900",   u"2/3/2020",           u"2/3/2020 11:59:59 PM",
    u"2/29/2020",  u"12/31/9999"};
constexpr double madeNumbers[] = {0,    1,    -1,      2,    3,           0.5,   1.5, 2.5,
                                  -0.5, -2.5, 1.0 / 3, 1e-5, 1234567.891, 40000, 1e9};
constexpr double madeWholes[] = {0, 1, -1, 2, 3, 7, 480, -30, 2147483647, -2147483648};

QString textLiteral(const QString& text) {
    return u'\'' + text + u'\'';
}

} // namespace

QString q(const char16_t* text) {
    return QString::fromUtf16(text);
}

QString call(const char16_t* function, const QStringList& arguments) {
    return q(function) + u'(' + arguments.join(QStringLiteral(", ")) + u')';
}

QString joined(const QString& left, const char16_t* sign, const QString& right) {
    return u'(' + left + u' ' + q(sign) + u' ' + right + u')';
}

QStringList MadeTable::columns() const {
    QStringList result;
    for (const auto* list : {&texts, &numbers, &dates})
        for (const char16_t* column : *list)
            result << q(column);
    return result;
}

std::span<const MadeTable> madeTables() {
    return tables;
}

QString ExpressionMaker::anyText() {
    return upTo(6) == 0 ? q(anyOf(madeTexts)) + q(anyOf(madeTexts)) : q(anyOf(madeTexts));
}

double ExpressionMaker::anyNumber(bool isWhole) {
    return isWhole ? anyOf(madeWholes) : anyOf(madeNumbers);
}

QString ExpressionMaker::anyDate() {
    return q(anyOf(madeDates));
}

QString ExpressionMaker::column(std::vector<const char16_t*> MadeTable::*kind) {
    const MadeTable& table = upTo(4) == 0 ? *anyOf(m_tables) : *m_tables.back();
    return u'[' + q(anyOf(table.*kind)) + u']';
}

QString ExpressionMaker::text(int depth) {
    if (depth > 0 && upTo(2) == 0)
        return textCall(depth - 1);
    switch (upTo(12)) {
    case 0:
        return QStringLiteral("Null");
    case 1:
    case 2:
    case 3:
        return textLiteral(anyText());
    default:
        return column(&MadeTable::texts);
    }
}

QString ExpressionMaker::textCall(int depth) {
    static constexpr const char16_t* plain[] = {u"Trim", u"LTrim", u"RTrim", u"UCase", u"LCase"};
    const QString count = upTo(8) == 0 ? number(depth) : QString::number(upTo(4));
    switch (upTo(8)) {
    case 0:
        return call(u"Left", {value(depth), count});
    case 1:
        return call(u"Right", {value(depth), count});
    case 2:
        return call(u"Mid", {text(depth), count, QString::number(upTo(3))});
    case 3:
        return call(u"Mid", {text(depth), count});
    case 4:
        return joined(value(depth), u"&", value(depth));
    case 5:
        return joined(text(depth), u"+", text(depth));
    case 6:
        return call(u"IIf", {condition(depth), text(depth), value(depth)});
    default:
        return call(anyOf(plain), {text(depth)});
    }
}

QString ExpressionMaker::number(int depth) {
    if (depth > 0 && upTo(2) == 0)
        return numberCall(depth - 1);
    switch (upTo(12)) {
    case 0:
        return QStringLiteral("Null");
    case 1:
        return QStringLiteral("True");
    case 2:
    case 3:
        return QString::number(anyNumber(upTo(2) == 0), 'g', 17);
    default:
        return column(&MadeTable::numbers);
    }
}

QString ExpressionMaker::numberCall(int depth) {
    static constexpr const char16_t* signs[] = {u"+", u"-", u"*", u"/", u"Mod"};
    switch (upTo(9)) {
    case 0:
        return QStringLiteral("(- ") + value(depth) + u')';
    case 1:
        return call(u"Abs", {value(depth)});
    case 2:
        return call(u"Int", {value(depth)});
    case 3:
        return call(u"Len", {value(depth)});
    case 4:
        return call(u"IIf",
                    {call(u"IsNull", {column(&MadeTable::numbers)}), number(depth), number(depth)});
    case 5:
        return call(u"IIf", {condition(depth), number(depth), number(depth)});
    case 6:
        return subquery([this] { return aggregate(1); });
    case 7:
        return joined(value(depth), anyOf(signs), value(depth));
    default:
        return joined(number(depth), anyOf(signs), number(depth));
    }
}

QString ExpressionMaker::date(int depth) {
    switch (upTo(depth > 0 ? 7 : 4)) {
    case 0:
        return u'#' + anyDate() + u'#';
    case 4:
        return call(u"DateValue", {value(depth - 1)});
    case 5:
        return joined(date(depth - 1), upTo(2) == 0 ? u"+" : u"-", number(depth - 1));
    case 6:
        return call(u"IIf", {condition(depth - 1), date(depth - 1), date(depth - 1)});
    default:
        return column(&MadeTable::dates);
    }
}

QString ExpressionMaker::valueLike(int kind, int depth) {
    return kind == 0 ? text(depth) : kind == 1 ? number(depth) : date(depth);
}

QString ExpressionMaker::value(int depth) {
    return upTo(9) == 0 ? condition(depth) : valueLike(upTo(3), depth);
}

QString ExpressionMaker::condition(int depth) {
    if (depth > 0 && upTo(3) == 0) {
        const QString left = condition(depth - 1);
        return upTo(4) == 0 ? QStringLiteral("(Not ") + left + u')'
                            : joined(left, upTo(2) == 0 ? u"And" : u"Or", condition(depth - 1));
    }
    switch (upTo(8)) {
    case 0:
        return joined(value(depth - 1), upTo(2) == 0 ? u"Is" : u"Is Not", QStringLiteral("Null"));
    case 1:
        return joined(value(depth - 1), u"Like", textLiteral(q(anyOf(patterns))));
    case 2:
    case 3:
        return membership(depth - 1);
    case 4:
        return u'(' + number(depth - 1) + u')';
    default:
        return comparison(depth - 1);
    }
}

QString ExpressionMaker::comparison(int depth) {
    static constexpr const char16_t* signs[] = {u"=", u"=", u"<>", u"<", u"<=", u">", u">="};
    const int kind = upTo(3);
    const QString right = upTo(30) == 0 ? value(depth) : valueLike(kind, depth);
    return joined(valueLike(kind, depth), anyOf(signs), right);
}

QString ExpressionMaker::membership(int depth) {
    const int kind = upTo(3);
    const QString left = valueLike(kind, depth);
    const char16_t* in = upTo(4) == 0 ? u"Not In" : u"In";
    if (upTo(3) == 0)
        return u'(' + left + QStringLiteral(" Between ") + valueLike(kind, 0) +
               QStringLiteral(" And ") + valueLike(kind, 0) + u')';
    if (upTo(3) == 0)
        return joined(left, in, subquery([&] { return valueLike(kind, 1); }));
    QStringList items;
    for (int count = 1 + upTo(7); count > 0; --count)
        items << (kind == 0 ? textLiteral(anyText()) : valueLike(kind, 0));
    return joined(left, in, u'(' + items.join(QStringLiteral(", ")) + u')');
}

QString ExpressionMaker::subquery(const std::function<QString()>& what) {
    const MadeTable& table = anyOf(tables);
    m_tables.push_back(&table);
    const QString select =
        QStringLiteral("(Select %1 From [%2]").arg(what(), q(table.name)) + where(3) + u')';
    m_tables.pop_back();
    return select;
}

QString ExpressionMaker::where(int odds) {
    const int depth = m_tables.size() > 1 ? 1 : 2;
    return upTo(odds) == 0 ? QString() : QStringLiteral(" Where ") + condition(depth);
}

// Over values of the innermost table alone: others would be summed up outside.
QString ExpressionMaker::aggregate(int depth) {
    const auto outer = std::exchange(m_tables, {m_tables.back()});
    QString result;
    switch (upTo(5)) {
    case 0:
        result = call(u"Count", {upTo(2) == 0 ? QStringLiteral("*") : value(depth)});
        break;
    case 1:
        result = call(upTo(2) == 0 ? u"Min" : u"Max", {date(depth)});
        break;
    case 2:
        result = call(upTo(2) == 0 ? u"Min" : u"Max", {number(depth)});
        break;
    default:
        result = call(upTo(3) == 0 ? u"Avg" : u"Sum", {number(depth)});
    }
    m_tables = outer;
    return result;
}

} // namespace tallyroom
