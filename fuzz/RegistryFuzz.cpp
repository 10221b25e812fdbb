// The registry's text: a key, a name, a value, and the text in which they are set.
#include "addin/RegistryText.h"
#include "fuzz/Fuzz.h"

using namespace tallyroom;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes = bytesOf(data, size);
    require(bytes.isEmpty() ||
                RegistryText(bytes).text() == bytes + (bytes.endsWith('\n') ? "" : "\n"),
            "what others have written stays");

    const QStringList lines = linesOf(data, size, 4);
    const QString key = QString(lines[0]).remove(u']');
    const QString& name = lines[1];
    const QString& value = lines[2];
    RegistryText registry(lines[3].toUtf8());
    registry.setValue(key, name, value);
    require(registry.value(key, name) == value, "what is set is found");
    const QByteArray written = registry.text();
    registry.setValue(key, name, value);
    require(registry.text() == written, "what is there already is not added");
    RegistryText again(written);
    require(again.value(key, name) == value, "what is written is found");
    again.deleteKey(key);
    require(!again.hasKey(key), "what is deleted is gone");
    require(!RegistryText(again.text()).hasKey(key), "and stays away");
    return 0;
}
