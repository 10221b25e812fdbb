// Where a name in an expression may come from.
#pragma once

#include "store/sql/Bound.h"

#include <functional>

namespace tallyroom::sql {

class Scope {
public:
    virtual ~Scope() = default;

    // What the name stands for, or null when nothing here or further out has it. An empty
    // qualifier is that of an unqualified name.
    virtual BoundPtr resolve(const QString& qualifier, const QString& name) = 0;
};

// No names at all: the values of an Insert.
class EmptyScope final : public Scope {
public:
    BoundPtr resolve(const QString&, const QString&) override { return nullptr; }
};

// The columns of one table, then what lies further out.
class TableScope final : public Scope {
public:
    TableScope(BoundSource source, QString name, Scope* outer);

    BoundPtr resolve(const QString& qualifier, const QString& name) override;
    BoundPtr column(std::size_t position) const;

private:
    BoundSource m_source;
    QString m_name; // by which the statement's own text qualifies columns
    Scope* m_outer;
};

// The columns of a finished query by their output names: what criteria speak of.
class ResultScope final : public Scope {
public:
    explicit ResultScope(const BoundSelect& select) : m_select(select) {}

    BoundPtr resolve(const QString& qualifier, const QString& name) override;

private:
    const BoundSelect& m_select;
};

} // namespace tallyroom::sql
