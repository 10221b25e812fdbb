#include "addin/Registry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextStream>

namespace tallyroom {

namespace {

const QString heading = QStringLiteral("Windows Registry Editor Version 5.00");
const QString root = QStringLiteral("HKEY_LOCAL_MACHINE\\");
constexpr int lockTimeout = 500; // milliseconds; a host must not wait for a record of its start

QString escaped(QString text) {
    return text.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('"'), QLatin1String("\\\""))
        .replace(QLatin1Char('\n'), QLatin1Char(' '));
}

QString unescaped(QString text) {
    static const QRegularExpression escape(QStringLiteral("\\\\(.)"));
    return text.replace(escape, QStringLiteral("\\1"));
}

// The stored spelling of a key or name that differs in case only, else the given one.
template<class Map>
QString spelling(const Map& map, const QString& name) {
    for (auto at = map.keyBegin(); at != map.keyEnd(); ++at) {
        if (at->compare(name, Qt::CaseInsensitive) == 0)
            return *at;
    }
    return name;
}

bool isBelow(const QString& key, const QString& parent) {
    return key.compare(parent, Qt::CaseInsensitive) == 0 ||
           key.startsWith(parent + QLatin1Char('\\'), Qt::CaseInsensitive);
}

} // namespace

Registry::Registry(QString file) : m_file(std::move(file)) {}

QString Registry::defaultFile() {
    const QString moved = qEnvironmentVariable("TALLYROOM_REGISTRY");
    return moved.isEmpty() ? QStringLiteral("/var/lib/brightclock/registry.reg") : moved;
}

bool Registry::createKey(const QString& key) {
    return change([&](Keys& keys) {
        keys[spelling(keys, key)];
        return true;
    });
}

bool Registry::isWritable() {
    return change([](Keys&) { return true; });
}

bool Registry::deleteKey(const QString& key) {
    return change([&](Keys& keys) {
        return keys.removeIf([&](const Keys::iterator& at) { return isBelow(at.key(), key); }) > 0;
    });
}

bool Registry::setValue(const QString& key, const QString& name, const QString& text) {
    return change([&](Keys& keys) {
        Values& values = keys[spelling(keys, key)];
        values[spelling(values, name)] = text;
        return true;
    });
}

std::optional<QString> Registry::value(const QString& key, const QString& name) const {
    const Keys keys = read().value_or(Keys());
    const Values values = keys.value(spelling(keys, key));
    const auto found = values.constFind(spelling(values, name));
    return found == values.constEnd() ? std::nullopt : std::optional(*found);
}

bool Registry::hasKey(const QString& key) const {
    const Keys keys = read().value_or(Keys());
    return keys.contains(spelling(keys, key));
}

// Lines that are neither a key nor a text value are passed over: other programs may keep other
// kinds of value, but no program of this machine does.
std::optional<Registry::Keys> Registry::read() const {
    static const QRegularExpression valueLine(
        QStringLiteral("^(?:@|\"((?:[^\"\\\\]|\\\\.)*)\")=\"((?:[^\"\\\\]|\\\\.)*)\"$"));
    QFile file(m_file);
    if (!file.exists())
        return Keys();
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    Keys keys;
    QString key;
    QTextStream lines(&file);
    for (QString line; lines.readLineInto(&line);) {
        if (line.startsWith(QLatin1Char('[') + root) && line.endsWith(QLatin1Char(']'))) {
            key = line.mid(1 + root.size()).chopped(1);
            keys[key];
        } else if (const auto match = valueLine.match(line); match.hasMatch() && !key.isEmpty()) {
            keys[key][unescaped(match.captured(1))] = unescaped(match.captured(2));
        }
    }
    return keys;
}

bool Registry::write(const Keys& keys) const {
    QSaveFile file(m_file);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    QTextStream out(&file);
    out << heading << "\n";
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        out << "\n[" << root << key.key() << "]\n";
        for (auto value = key->cbegin(); value != key->cend(); ++value) {
            if (value.key().isEmpty())
                out << "@";
            else
                out << '"' << escaped(value.key()) << '"';
            out << "=\"" << escaped(*value) << "\"\n";
        }
    }
    out.flush();
    return file.commit();
}

bool Registry::change(const std::function<bool(Keys&)>& edit) const {
    if (!QDir().mkpath(QFileInfo(m_file).absolutePath()))
        return false;
    QLockFile lock(m_file + QStringLiteral(".lock"));
    if (!lock.tryLock(lockTimeout))
        return false;
    auto keys = read();
    return keys && edit(*keys) && write(*keys);
}

} // namespace tallyroom
