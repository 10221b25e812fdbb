// Texts and memos as they lie in the file.
#pragma once

#include "host/oldfiles/reader/MdbLibrary.h"

#include <QByteArray>
#include <QString>
#include <iconv.h>

namespace tallyroom::host {

// Throws OldFileRefused (Damaged) without the place.
class MdbTexts {
public:
    // Of this code page where the file's texts are of one; 0 for the one that the file names.
    MdbTexts(MdbHandle& mdb, int codePage);
    ~MdbTexts();
    MdbTexts(const MdbTexts&) = delete;
    MdbTexts& operator=(const MdbTexts&) = delete;

    // What its code page does not have becomes U+FFFD.
    QString text(const QByteArray& bytes) const;
    QString memo(const QByteArray& field) const;

private:
    QString ofCodePage(const QByteArray& bytes) const;
    QByteArray memoBytes(const QByteArray& field) const;
    QByteArray chainBytes(quint32 place, quint32 length) const;
    QByteArray rowAt(quint32 place) const;

    MdbHandle& m_mdb;
    iconv_t m_codePage; // of the oldest version; later ones are Unicode
};

} // namespace tallyroom::host
