// Texts of settings: a key, a value, and the text in which they are looked for and set.
#include "fuzz/Fuzz.h"
#include "ordering/SettingsText.h"

using namespace tallyroom;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QStringList lines = linesOf(data, size, 3);
    const QString& text = lines[2];
    const QString key = QString(lines[0]).remove(u'|').remove(u'=');
    const QString value = QString(lines[1]).remove(u'|');
    SettingsText settings(text);
    require(settings.text() == text, "a text is kept as it is");
    indexedElements(settings);

    settings.set({{key, value}, {value, key}, {key, value}});
    const QString inTurn =
        SetTagValue(SetTagValue(SetTagValue(text, key, value), value, key), key, value);
    require(settings.text() == inTurn, "many are set as one after the other");
    const QString none = QStringLiteral("none");
    require(settings.value(key, none) == (value.isEmpty() ? none : value), "what is set is found");
    require(settings.value(key, none) == GetTagValue(inTurn, key, none), "once split as anew");
    return 0;
}
