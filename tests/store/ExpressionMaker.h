// Expressions of the whole grammar over two of the host's tables, made by chance.
#pragma once

#include <QStringList>
#include <functional>
#include <random>
#include <span>
#include <vector>

namespace tallyroom {

struct MadeTable {
    const char16_t* name;
    std::vector<const char16_t*> texts;
    std::vector<const char16_t*> numbers; // fractions first, from `wholes` on whole ones
    std::size_t wholes;
    std::vector<const char16_t*> dates;

    QStringList columns() const;
};

std::span<const MadeTable> madeTables();

// "function(a, b)" and "(left sign right)".
QString q(const char16_t* text);
QString call(const char16_t* function, const QStringList& arguments);
QString joined(const QString& left, const char16_t* sign, const QString& right);

class ExpressionMaker {
public:
    explicit ExpressionMaker(unsigned seed) : m_random(seed) {}

    int upTo(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

protected:
    template<class List>
    const auto& anyOf(const List& list) {
        return list[static_cast<std::size_t>(upTo(static_cast<int>(std::size(list))))];
    }
    QString anyText();
    double anyNumber(bool isWhole);
    QString anyDate();
    QString column(std::vector<const char16_t*> MadeTable::*kind);

    QString text(int depth);
    QString number(int depth);
    QString date(int depth);
    QString value(int depth);
    QString valueLike(int kind, int depth);
    QString condition(int depth);
    QString aggregate(int depth);
    QString where(int odds);

    std::mt19937 m_random;
    std::vector<const MadeTable*> m_tables; // whose columns may be named, the innermost last

private:
    QString textCall(int depth);
    QString numberCall(int depth);
    QString comparison(int depth);
    QString membership(int depth);
    QString subquery(const std::function<QString()>& what);
};

} // namespace tallyroom
