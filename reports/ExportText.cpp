#include "reports/ExportText.h"

#include <QList>

namespace tallyroom {

namespace {

bool isLeftOut(char32_t character) {
    return character != U'\n' &&
           (QChar::category(character) == QChar::Other_Control || QChar::isSurrogate(character) ||
            QChar::isNonCharacter(character));
}

} // namespace

QString exportedText(const QString& text) {
    QList<uint> characters = QString(text).replace(QLatin1Char('\t'), QLatin1Char(' ')).toUcs4();
    characters.removeIf([](uint character) { return isLeftOut(character); });
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()),
                             characters.size());
}

} // namespace tallyroom
