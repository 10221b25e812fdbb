#include "store/sql/Scope.h"

#include "store/sql/Typing.h"

namespace tallyroom::sql {

TableScope::TableScope(BoundSource source, QString name, Scope* outer)
    : m_source(std::move(source)), m_name(std::move(name)), m_outer(outer) {}

BoundPtr TableScope::resolve(const QString& qualifier, const QString& name) {
    if (qualifier.isEmpty() || qualifier.compare(m_name, Qt::CaseInsensitive) == 0) {
        const int position = m_source.table->indexOf(name);
        if (position >= 0)
            return column(static_cast<std::size_t>(position));
    }
    return m_outer ? m_outer->resolve(qualifier, name) : nullptr;
}

BoundPtr TableScope::column(std::size_t position) const {
    const CatalogColumn& column = m_source.table->columns[position];
    return columnNode(m_source.alias, column);
}

BoundPtr ResultScope::resolve(const QString&, const QString& name) {
    for (const BoundColumn& column : m_select.columns) {
        if (column.name.compare(name, Qt::CaseInsensitive) == 0)
            return column.value;
    }
    return nullptr;
}

} // namespace tallyroom::sql
