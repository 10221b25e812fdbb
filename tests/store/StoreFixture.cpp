#include "tests/store/StoreFixture.h"

namespace tallyroom {

QString hostPath(const DataFolder& folder) {
    return testsOnServer() ? folder.path() : QString(folder.path()).replace(u'/', u'\\');
}

QString shown(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null:
        return QStringLiteral("Null");
    case Variant::Type::Text:
        return u'\'' + value.toText() + u'\'';
    case Variant::Type::Date:
        return u'#' + value.toText() + u'#';
    case Variant::Type::Double:
        return value.toText() + u'd';
    default:
        return value.toText();
    }
}

QStringList rowsOf(Recordset& recordset) {
    QStringList rows;
    for (; !recordset.eof(); recordset.moveNext()) {
        QStringList values;
        for (int i = 0; i < recordset.fieldCount(); ++i)
            values << shown(recordset.field(i));
        rows << values.join(QStringLiteral(" | "));
    }
    return rows;
}

} // namespace tallyroom
