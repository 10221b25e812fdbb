#include "common/TextOrder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <unicode/ucol.h>

using namespace tallyroom;

namespace {

int sign(int order) {
    return (order > 0) - (order < 0);
}

// As the files' indexes match texts: by the case of the letters A to Z alone.
bool hasSpelling(const QString& text, const QString& spelling) {
    const QStringList all = TextOrder::spellings(text);
    const QByteArray wanted = (u'|' + spelling).trimmed().sliced(1).toUtf8();
    return std::any_of(all.begin(), all.end(), [&](const QString& one) {
        return one.toUtf8().compare(wanted, Qt::CaseInsensitive) == 0;
    });
}

int collated(UCollator* collator, QStringView left, QStringView right) {
    return ucol_strcoll(collator, left.utf16(), static_cast<int>(left.size()), right.utf16(),
                        static_cast<int>(right.size()));
}

TEST(TextOrder, SameTextsDifferInCaseAndBlanksAtTheEndOnly) {
    const struct {
        const char16_t* left;
        const char16_t* right;
        bool same;
    } cases[] = {
        {u"ÉMILE Ø", u"émile ø  ", true},
        {u"É", u"E", false},
        {u"ΣΑΣ", u"σας", true},
        {u"𐐀", u"𐐨", true},
        {u"\u212A", u"k", false},
        {u"\u017F", u"S", false},
        {u"ß", u"ss", false},
        {u"ß", u"ẞ", true},
        {u"E\u0301", u"É", false},
        {u" a", u"a", false},
        {u"a\u0001", u"a", false},
        {u"", u"  ", true},
        {u"\u0345", u"Ι", true},
        {u"İ", u"i", false},
    };
    for (const auto& c : cases) {
        const QString left = QString::fromUtf16(c.left);
        const QString right = QString::fromUtf16(c.right);
        EXPECT_EQ(TextOrder::isSame(left, right), c.same) << left.toStdString();
        EXPECT_EQ(TextOrder::compare(left, right) == 0, c.same) << left.toStdString();
        EXPECT_EQ(TextOrder::compare(left.toUtf8(), right.toUtf8()) == 0, c.same);
        EXPECT_EQ(hasSpelling(left, right), c.same) << left.toStdString();
    }
    EXPECT_EQ(TextOrder::spellings(QStringLiteral("Añé")).size(), 4);
    EXPECT_TRUE(TextOrder::spellings(QString(20, u'я')).isEmpty());
}

// Texts of ASCII never reach the collation: their order must be its own, also beside others.
TEST(TextOrder, IsThatOfTheCollation) {
    UErrorCode status = U_ZERO_ERROR;
    UCollator* root = ucol_open("root", &status);
    ucol_setStrength(root, UCOL_SECONDARY);
    std::mt19937 random(20080105);
    const auto randomText = [&](unsigned others) {
        QString text;
        for (auto length = random() % 6; length > 0; --length)
            text += random() % 100 < others ? QStringLiteral("çÇñŁΩя·")[random() % 7]
                                            : QChar(static_cast<char16_t>(u' ' + random() % 95));
        return text + u'a'; // the collation itself counts blanks at the end
    };
    for (int i = 0; i < 200000; ++i) {
        const QString a = randomText(i % 2 ? 0 : 20);
        const QString b = random() % 4 ? randomText(i % 2 ? 0 : 20) : a.toUpper();
        const int expected = collated(root, a, b);
        ASSERT_EQ(sign(TextOrder::compare(a, b)), expected) << a.toStdString() << b.toStdString();
        ASSERT_EQ(sign(TextOrder::compare(a.toUtf8(), b.toUtf8())), expected) << a.toStdString();
    }
    ucol_close(root);
}

} // namespace
