#include "store/sql/Scope.h"

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
    auto node = std::make_shared<BoundNode>();
    node->kind = BoundKind::Column;
    node->type = column.type;
    node->width = column.width;
    node->source = m_source.alias;
    node->column = column.name;
    return node;
}

BoundPtr ResultScope::resolve(const QString&, const QString& name) {
    for (const BoundColumn& column : m_select.columns) {
        if (column.name.compare(name, Qt::CaseInsensitive) == 0)
            return column.value;
    }
    return nullptr;
}

} // namespace tallyroom::sql
