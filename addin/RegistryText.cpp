#include "addin/RegistryText.h"

#include <QRegularExpression>
#include <algorithm>
#include <utility>

namespace tallyroom {

namespace {

// A key takes one line.
QString pathOf(QString key) {
    return key.replace(QLatin1Char('\n'), QLatin1Char(' '))
        .prepend(QLatin1String("HKEY_LOCAL_MACHINE\\"));
}

bool isSame(const QString& one, const QString& other) {
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

bool isBelow(const QString& key, const QString& parent) {
    return isSame(key, parent) || key.startsWith(parent + QLatin1Char('\\'), Qt::CaseInsensitive);
}

QByteArray quoted(QString text) {
    return text.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('"'), QLatin1String("\\\""))
        .replace(QLatin1Char('\n'), QLatin1Char(' '))
        .prepend(QLatin1Char('"'))
        .append(QLatin1Char('"'))
        .toUtf8();
}

QString unescaped(QString text) {
    static const QRegularExpression escape(QStringLiteral("\\\\(.)"),
                                           QRegularExpression::DotMatchesEverythingOption);
    return text.replace(escape, QStringLiteral("\\1"));
}

bool isRemark(const QByteArray& line) {
    return line.trimmed().isEmpty() || line.startsWith(';');
}

// What stands in quotation marks, and nothing after it.
std::optional<QString> textIn(const QByteArray& stored) {
    static const QRegularExpression whole(QStringLiteral("^\"((?:[^\"\\\\]++|\\\\.)*+)\"\\s*$"),
                                          QRegularExpression::DotMatchesEverythingOption);
    const auto match = whole.match(QString::fromUtf8(stored));
    return match.hasMatch() ? std::optional(unescaped(match.captured(1))) : std::nullopt;
}

// Whether a value goes on in the next line, as long binary values and texts with line breaks do. It
// sees every line once.
class OpenValue {
public:
    explicit OpenValue(const QByteArray& stored)
        : m_isText(stored.startsWith('"')), m_isBinary(stored.startsWith("hex")) {
        read(m_isText ? stored.mid(1) : stored);
    }
    bool isOpen() const { return m_isOpen; }

    void read(const QByteArray& line) {
        if (m_isText)
            m_isOpen = staysOpen(line);
        else if (const QByteArray shown = line.trimmed(); m_isBinary && !shown.isEmpty())
            m_isOpen = shown.endsWith('\\');
    }

private:
    static bool staysOpen(const QByteArray& text) {
        bool isEscaped = false;
        for (const char letter : text) {
            if (letter == '"' && !isEscaped)
                return false;
            isEscaped = letter == '\\' && !isEscaped;
        }
        return true;
    }

    bool m_isText;
    bool m_isBinary;
    bool m_isOpen = false;
};

} // namespace

void RegistryText::Entry::add(const QByteArray& line) {
    stored += line;
    lines += line;
}

bool RegistryText::Entry::isKey(const QString& path) const {
    return kind == Kind::Key && isSame(name, path);
}

RegistryText::RegistryText(const QByteArray& text) {
    QByteArrayList lines = text.split('\n');
    if (lines.back().isEmpty())
        lines.removeLast();
    if (lines.isEmpty())
        lines.append("Windows Registry Editor Version 5.00");
    for (qsizetype at = 0; at < lines.size();) {
        Entry entry = read(lines[at++] + '\n');
        OpenValue value(entry.stored);
        for (; value.isOpen() && at < lines.size(); ++at) {
            const QByteArray line = lines[at] + '\n';
            value.read(line);
            entry.add(line);
        }
        entry.isOpen = value.isOpen();
        m_entries.push_back(std::move(entry));
    }
}

QByteArray RegistryText::text() const {
    QByteArray text;
    for (const Entry& entry : m_entries)
        text += entry.lines;
    return text;
}

RegistryText::Entry RegistryText::read(const QByteArray& line) {
    static const QRegularExpression value(
        QStringLiteral("^(?:@|\"((?:[^\"\\\\]++|\\\\.)*+)\")=(.*)$"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression key(QStringLiteral("^\\[(.*?)\\]\\s*(?:;.*)?$"));
    const QString text = QString::fromUtf8(line).trimmed();
    if (const auto match = key.match(text); match.hasMatch())
        return {Entry::Kind::Key, match.captured(1), {}, line};
    if (const auto match = value.match(text); match.hasMatch())
        return {Entry::Kind::Value, unescaped(match.captured(1)), match.captured(2).toUtf8() + '\n',
                line};
    return {Entry::Kind::Other, {}, {}, line};
}

RegistryText::Entry RegistryText::valueEntry(const QString& name, const QString& text) {
    const QByteArray shown = name.isEmpty() ? QByteArray("@") : quoted(name);
    const QByteArray stored = quoted(text) + '\n';
    return {Entry::Kind::Value, name, stored, shown + '=' + stored};
}

bool RegistryText::hasKey(const QString& key) const {
    const QString path = pathOf(key);
    return std::ranges::any_of(m_entries, [&](const Entry& entry) { return entry.isKey(path); });
}

// The last one counts, as when such a text is imported.
std::size_t RegistryText::positionOf(const QString& path, const QString& name) const {
    std::size_t found = m_entries.size();
    bool inKey = false;
    for (std::size_t at = 0; at < m_entries.size(); ++at) {
        const Entry& entry = m_entries[at];
        if (entry.kind == Entry::Kind::Key)
            inKey = entry.isKey(path);
        else if (inKey && entry.kind == Entry::Kind::Value && isSame(entry.name, name))
            found = at;
    }
    return found;
}

std::optional<QString> RegistryText::value(const QString& key, const QString& name) const {
    const std::size_t at = positionOf(pathOf(key), name);
    return at < m_entries.size() ? textIn(m_entries[at].stored) : std::nullopt;
}

// The entry of the key itself, which is added if need be.
RegistryText::Entries::iterator RegistryText::sectionOf(const QString& path) {
    const auto known =
        std::ranges::find_if(m_entries, [&](const Entry& entry) { return entry.isKey(path); });
    if (known != m_entries.end())
        return known;
    m_entries.push_back({Entry::Kind::Other, {}, {}, "\n"});
    m_entries.push_back({Entry::Kind::Key, path, {}, '[' + path.toUtf8() + "]\n"});
    return m_entries.end() - 1;
}

// Comments and blanks between the last value of a key and the next key belong to neither.
RegistryText::Entries::iterator RegistryText::endOf(Entries::iterator section) {
    const auto isNextKey = [](const Entry& entry) { return entry.kind == Entry::Kind::Key; };
    auto end = std::find_if(section + 1, m_entries.end(), isNextKey);
    while ((end - 1)->kind == Entry::Kind::Other && isRemark((end - 1)->lines))
        --end;
    return end;
}

void RegistryText::deleteKey(const QString& key) {
    const auto isGoing = [path = pathOf(key)](const Entry& entry) {
        return entry.kind == Entry::Kind::Key && isBelow(entry.name, path);
    };
    for (auto at = m_entries.begin();
         (at = std::find_if(at, m_entries.end(), isGoing)) != m_entries.end();) {
        const bool afterBlank = at != m_entries.begin() && (at - 1)->lines.trimmed().isEmpty();
        at = m_entries.erase(afterBlank ? at - 1 : at, endOf(at));
    }
}

// To a value that the text breaks off in, whatever comes behind it would belong.
void RegistryText::closeLastValue() {
    Entry& last = m_entries.back();
    if (std::exchange(last.isOpen, false))
        last.add(";\"\n");
}

void RegistryText::setValue(const QString& key, const QString& name, const QString& text) {
    closeLastValue();
    const QString path = pathOf(key);
    const std::size_t known = positionOf(path, name);
    if (known < m_entries.size()) {
        m_entries[known] = valueEntry(m_entries[known].name, text);
        return;
    }
    const auto section = sectionOf(path);
    m_entries.insert(name.isEmpty() ? section + 1 : endOf(section), valueEntry(name, text));
}

} // namespace tallyroom
