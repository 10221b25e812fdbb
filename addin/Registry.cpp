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

QString stored(const QString& text) {
    return QLatin1Char('"') + escaped(text) + QLatin1Char('"');
}

// Long binary values go on in the next line.
bool isContinued(const QString& line) {
    return line.endsWith(QLatin1Char('\\')) && !line.startsWith(QLatin1Char(';'));
}

bool isText(const QString& stored) {
    return stored.size() >= 2 && stored.startsWith(QLatin1Char('"')) &&
           stored.endsWith(QLatin1Char('"'));
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
        keys[spelling(keys, root + key)];
        return true;
    });
}

bool Registry::isWritable() {
    return change([](Keys&) { return true; });
}

bool Registry::deleteKey(const QString& key) {
    return change([&](Keys& keys) {
        return keys.removeIf(
                   [&](const Keys::iterator& at) { return isBelow(at.key(), root + key); }) > 0;
    });
}

bool Registry::setValue(const QString& key, const QString& name, const QString& text) {
    return change([&](Keys& keys) {
        auto& values = keys[spelling(keys, root + key)].values;
        values[spelling(values, name)] = stored(text);
        return true;
    });
}

std::optional<QString> Registry::value(const QString& key, const QString& name) const {
    const Keys keys = read().value_or(Keys());
    const auto values = keys.value(spelling(keys, root + key)).values;
    const QString found = values.value(spelling(values, name));
    return isText(found) ? std::optional(unescaped(found.mid(1).chopped(1))) : std::nullopt;
}

bool Registry::hasKey(const QString& key) const {
    const Keys keys = read().value_or(Keys());
    return keys.contains(spelling(keys, root + key));
}

void Registry::readValue(const QString& line, Key& key) {
    static const QRegularExpression valueLine(
        QStringLiteral("^(?:@|\"((?:[^\"\\\\]|\\\\.)*)\")=(.*)$"),
        QRegularExpression::DotMatchesEverythingOption);
    if (const auto match = valueLine.match(line); match.hasMatch())
        key.values[unescaped(match.captured(1))] = match.captured(2);
    else
        key.comments.append(line);
}

std::optional<Registry::Keys> Registry::read() const {
    QFile file(m_file);
    if (!file.exists())
        return Keys();
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    Keys keys;
    QString key;
    QTextStream lines(&file);
    for (QString line; lines.readLineInto(&line);) {
        for (QString more; isContinued(line) && lines.readLineInto(&more);)
            line += QLatin1Char('\n') + more;
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
            keys[key = line.mid(1).chopped(1)];
        else if (!line.isEmpty() && line != heading)
            readValue(line, keys[key]);
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
        if (!key.key().isEmpty())
            out << "\n[" << key.key() << "]\n";
        for (const QString& comment : key->comments)
            out << comment << "\n";
        for (auto value = key->values.cbegin(); value != key->values.cend(); ++value)
            out << (value.key().isEmpty() ? QStringLiteral("@") : stored(value.key())) << "="
                << *value << "\n";
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
