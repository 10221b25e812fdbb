#include "addin/Registry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

namespace tallyroom {

namespace {

constexpr int lockTimeout = 500; // milliseconds; a host must not wait for a record of its start

// A pipe or a device may keep whoever opens it waiting for ever.
bool mayBeOpened(const QString& file) {
    const QFileInfo info(file);
    return info.isFile() || !info.exists();
}

constexpr QFile::Permissions readableByAll =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

// The registry is the machine's, whatever a host's mask makes of files of its own.
bool makeFolder(const QString& folder) {
    constexpr QFile::Permissions search = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    return QFileInfo(folder).isDir() ||
           (QDir().mkpath(folder) && QFile::setPermissions(folder, readableByAll | search));
}

} // namespace

Registry::Registry(QString file) : m_file(std::move(file)) {}

QString Registry::defaultFile() {
    const QString moved = qEnvironmentVariable("TALLYROOM_REGISTRY");
    return moved.isEmpty() ? QStringLiteral("/var/lib/brightclock/registry.reg") : moved;
}

std::optional<QString> Registry::value(const QString& key, const QString& name) const {
    const auto text = read();
    return text ? text->value(key, name) : std::nullopt;
}

bool Registry::hasKey(const QString& key) const {
    const auto text = read();
    return text && text->hasKey(key);
}

// A text in UTF-16, as some programs export it, counts as one that cannot be read.
std::optional<RegistryText> Registry::read() const {
    QFile file(m_file);
    if (!file.exists())
        return RegistryText(QByteArray());
    if (!mayBeOpened(m_file) || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray text = file.readAll();
    if (file.error() != QFile::NoError || text.contains('\0'))
        return std::nullopt;
    return RegistryText(text);
}

bool Registry::write(const RegistryText& text) const {
    const bool isNew = !QFileInfo::exists(m_file);
    QSaveFile file(m_file);
    return file.open(QIODevice::WriteOnly) && (!isNew || file.setPermissions(readableByAll)) &&
           file.write(text.text()) >= 0 && file.commit();
}

bool Registry::change(const std::function<void(RegistryText&)>& edit) {
    if (!makeFolder(QFileInfo(m_file).absolutePath()))
        return false;
    const QString lockFile = m_file + QStringLiteral(".lock");
    QLockFile lock(lockFile);
    if (!mayBeOpened(lockFile) || !lock.tryLock(lockTimeout))
        return false;
    auto text = read();
    if (!text)
        return false;
    edit(*text);
    return write(*text);
}

} // namespace tallyroom
