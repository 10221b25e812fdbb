#include "host/oldfiles/reader/MdbTexts.h"

#include "host/oldfiles/OldValue.h"

#include <QtEndian>
#include <array>
#include <cerrno>

namespace tallyroom::host {

namespace {

const iconv_t noCodePage = reinterpret_cast<iconv_t>(-1);

OldFileRefused damaged(const QString& what) {
    return {OldRefusal::Damaged, what};
}

iconv_t codePageOf(const MdbHandle& mdb, int wanted) {
    if (!isOldestVersion(mdb))
        return noCodePage;
    const int number = wanted != 0 ? wanted : mdb.f->code_page;
    const QByteArray name = "CP" + QByteArray::number(number);
    const iconv_t converter = iconv_open("UTF-16LE", name.constData());
    if (converter == noCodePage)
        throw OldFileRefused{
            OldRefusal::Unknown,
            QStringLiteral("its texts are of the code page %1, which is not known.").arg(number)};
    return converter;
}

QString ofUtf16(const QByteArray& bytes) {
    if (bytes.size() % 2 != 0)
        throw damaged(QStringLiteral("a text ends within a character."));
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<quint16>(bytes.constData(), text.size(), text.data());
    return text;
}

// A zero byte switches between characters of one byte and of two.
// Source: HACKING.md of mdbtools, on texts that begin with 0xff 0xfe.
QString uncompressed(const QByteArray& bytes) {
    QString text;
    text.reserve(bytes.size());
    bool isNarrow = true;
    for (qsizetype at = 0; at < bytes.size();) {
        const auto low = static_cast<uchar>(bytes[at]);
        if (low == 0) {
            isNarrow = !isNarrow;
            ++at;
        } else if (isNarrow) {
            text += QChar(char16_t(low));
            ++at;
        } else if (at + 1 < bytes.size()) {
            text += QChar(qFromLittleEndian<quint16>(bytes.constData() + at));
            at += 2;
        } else {
            throw damaged(QStringLiteral("a text ends within a character."));
        }
    }
    return text;
}

} // namespace

MdbTexts::MdbTexts(MdbHandle& mdb, int codePage)
    : m_mdb(mdb), m_codePage(codePageOf(mdb, codePage)) {}

MdbTexts::~MdbTexts() {
    if (m_codePage != noCodePage)
        iconv_close(m_codePage);
}

QString MdbTexts::text(const QByteArray& bytes) const {
    constexpr QByteArrayView compressedMark("\xff\xfe");
    if (m_codePage != noCodePage)
        return ofCodePage(bytes);
    if (bytes.startsWith(compressedMark))
        return uncompressed(bytes.mid(compressedMark.size()));
    return ofUtf16(bytes);
}

QString MdbTexts::ofCodePage(const QByteArray& bytes) const {
    QString text;
    QByteArray input = bytes;
    char* from = input.data();
    auto left = static_cast<std::size_t>(input.size());
    while (left > 0) {
        std::array<char, 512> piece;
        char* to = piece.data();
        std::size_t room = piece.size();
        const bool isDone = iconv(m_codePage, &from, &left, &to, &room) != std::size_t(-1);
        text += ofUtf16(QByteArray(piece.data(), qsizetype(piece.size() - room)));
        if (!isDone && errno != E2BIG) {
            text += QChar::ReplacementCharacter;
            ++from;
            --left;
        }
    }
    return text;
}

QString MdbTexts::memo(const QByteArray& field) const {
    return text(memoBytes(field));
}

// Its length with flags above, the page and row where it lies, four bytes unused; then the memo
// itself if it is short. Source: HACKING.md of mdbtools, "Memo Field Definition".
QByteArray MdbTexts::memoBytes(const QByteArray& field) const {
    constexpr quint32 isInline = 0x80000000;
    constexpr quint32 isInOneRow = 0x40000000;
    constexpr quint32 lengthMask = 0x3fffffff;
    if (field.isEmpty())
        return {};
    if (field.size() < MDB_MEMO_OVERHEAD)
        throw damaged(QStringLiteral("a memo's head is cut."));
    const auto head = qFromLittleEndian<quint32>(field.constData());
    const auto place = qFromLittleEndian<quint32>(field.constData() + sizeof head);
    const quint32 length = head & lengthMask;
    const QByteArray bytes = (head & isInline) != 0     ? field.mid(MDB_MEMO_OVERHEAD)
                             : (head & isInOneRow) != 0 ? rowAt(place)
                                                        : chainBytes(place, length);
    if (bytes.size() < qsizetype(length))
        throw damaged(QStringLiteral("a memo is shorter than it should be."));
    return bytes.left(length);
}

// Each row of the chain begins with the place of the next.
QByteArray MdbTexts::chainBytes(quint32 place, quint32 length) const {
    constexpr qsizetype nextSize = sizeof(quint32);
    QByteArray bytes;
    while (place != 0 && bytes.size() < qsizetype(length)) {
        const QByteArray row = rowAt(place);
        if (row.size() <= nextSize)
            throw damaged(QStringLiteral("a memo's chain is broken."));
        bytes += row.mid(nextSize);
        place = qFromLittleEndian<quint32>(row.constData());
    }
    return bytes;
}

QByteArray MdbTexts::rowAt(quint32 place) const {
    void* page = nullptr;
    int start = 0;
    std::size_t size = 0;
    const auto pageSize = static_cast<std::size_t>(m_mdb.fmt->pg_size);
    if (mdb_find_pg_row(&m_mdb, static_cast<int>(place), &page, &start, &size) != 0 || start < 0 ||
        size > pageSize || std::size_t(start) + size > pageSize)
        throw damaged(QStringLiteral("a memo points to where there is none."));
    return {static_cast<const char*>(page) + start, qsizetype(size)};
}

} // namespace tallyroom::host
