#include "ordering/SettingsText.h"
#include "ordering/OrderingDraft.h"
#include "tests/support/Printing.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <algorithm>

using namespace tallyroom;

namespace {

TEST(SettingsText, TheFirstPairWithTheKeysStartAnswers) {
    const QString text = QStringLiteral("Index10=ten|Index1=one|flag|Empty=|a=b=c");
    const struct {
        const char16_t* key;
        QString value;
    } cases[] = {
        {u"Index1", QStringLiteral("ten")}, {u"INDEX10", QStringLiteral("ten")},
        {u"flag", QStringLiteral("flag")},  {u"Empty", QStringLiteral("none")},
        {u"a", QStringLiteral("b=c")},      {u"Index2", QStringLiteral("none")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetTagValue(text, QString::fromUtf16(c.key), QStringLiteral("none")), c.value);
    EXPECT_EQ(GetTagValue(QString(), QStringLiteral("a")), QString());
}

// The rule as it is told: look at one pair after the other.
QStringList::iterator answering(QStringList& pairs, const QString& key) {
    return std::ranges::find_if(pairs, [&](const QString& pair) {
        return pair.left(key.size()).toUpper() == key.toUpper();
    });
}

TEST(SettingsText, AnswersAsTheRuleDoesWhateverTheText) {
    QRandomGenerator random(3);
    const auto some = [&random](int longest) {
        QString text;
        for (int left = random.bounded(longest + 1); left > 0; --left)
            text += QStringLiteral("aAbBéÉ1=")[random.bounded(8)];
        return text;
    };
    for (int run = 0; run < 300; ++run) {
        QStringList pairs;
        for (int left = random.bounded(12); left > 0; --left)
            pairs.append(some(5));
        SettingsText text(pairs.join(u'|'));
        pairs = text.text().isEmpty() ? QStringList() : pairs;
        std::vector<Setting> settings;
        for (int left = random.bounded(6); left > 0; --left) {
            const Setting& set = settings.emplace_back(some(2), some(3));
            const QString pair = set.key + u'=' + set.value;
            const auto found = answering(pairs, set.key);
            found == pairs.end() ? pairs.append(pair) : void(*found = pair);
        }
        text.set(settings);
        ASSERT_EQ(text.text(), pairs.join(u'|'));
        for (int left = 20; left > 0; --left) {
            const QString key = some(4);
            const auto found = answering(pairs, key);
            const QString value =
                found == pairs.end() ? QString() : found->mid(found->indexOf(u'=') + 1);
            ASSERT_EQ(text.value(key, QStringLiteral("-")),
                      value.isEmpty() ? QStringLiteral("-") : value);
        }
    }
}

// Ten thousand elements, each with its own name, then as many that share one.
TEST(SettingsText, AMegabyteIsReadAndEditedInAMoment) {
    QStringList pairs;
    for (int n = 0; n < 10000; ++n)
        pairs += QStringLiteral("Item %1_State=True|Item %1_Direction=1|Index%1=Item %1").arg(n);
    for (int n = 0; n < 20000; ++n)
        pairs += QStringLiteral("Index%1=x|x_order%2=").arg(n + 10000).arg(n);
    const QString text = pairs.join(u'|');
    ASSERT_GT(text.size(), 1000000);
    QElapsedTimer time;
    time.start();
    OrderingDraft draft;
    draft.load(text);
    EXPECT_EQ(draft.count(), 16 + 30000);
    EXPECT_EQ(draft.summary().count(QStringLiteral("(Desc)")), 10000);
    EXPECT_EQ(draft.direction(16 + 9999), OrderingDraft::Descending);
    draft.exchange(16, 17);
    EXPECT_EQ(indexedElements(SettingsText(draft.detailsToStore())).size(), draft.count());
    EXPECT_LT(time.elapsed(), 30000) << "it takes a third of a second without sanitizers";
}

} // namespace
