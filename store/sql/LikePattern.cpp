#include "store/sql/LikePattern.h"

namespace tallyroom {

namespace {

bool inSet(QChar c, QStringView set) {
    const bool negated = set.startsWith(u'!');
    if (negated)
        set = set.sliced(1);
    const QChar folded = c.toCaseFolded();
    for (qsizetype i = 0; i < set.size(); ++i) {
        const QChar low = set.at(i).toCaseFolded();
        const bool range = i + 2 < set.size() && set.at(i + 1) == u'-';
        const QChar high = range ? set.at(i + 2).toCaseFolded() : low;
        if (folded >= low && folded <= high)
            return !negated;
        i += range ? 2 : 0;
    }
    return negated;
}

// Matches one character against the pattern's next element, whose length it reports; a length of
// 0 means that the pattern is malformed.
struct ElementMatch {
    bool matches = false;
    qsizetype length = 0;
};

ElementMatch matchElement(QChar c, QStringView pattern) {
    switch (pattern.front().unicode()) {
    case u'?':
        return {true, 1};
    case u'#':
        return {c >= u'0' && c <= u'9', 1};
    case u'[': {
        const qsizetype close = pattern.indexOf(u']');
        if (close < 0)
            return {};
        return {inSet(c, pattern.sliced(1, close - 1)), close + 1};
    }
    default:
        return {c.toCaseFolded() == pattern.front().toCaseFolded(), 1};
    }
}

} // namespace

// Goes back to the last star only: a star that matched earlier never needs to take more.
bool matchesLike(QStringView text, QStringView pattern) {
    QStringView starText;
    QStringView starPattern;
    bool star = false;
    for (;;) {
        if (pattern.startsWith(u'*')) {
            pattern = pattern.sliced(1);
            starText = text;
            starPattern = pattern;
            star = true;
            continue;
        }
        if (text.isEmpty())
            return pattern.isEmpty();
        const ElementMatch match =
            pattern.isEmpty() ? ElementMatch{} : matchElement(text.front(), pattern);
        if (match.matches) {
            text = text.sliced(1);
            pattern = pattern.sliced(match.length);
            continue;
        }
        if (!star || starText.isEmpty())
            return false;
        starText = starText.sliced(1);
        text = starText;
        pattern = starPattern;
    }
}

} // namespace tallyroom
