#include "common/TextOrder.h"

#include "common/RunError.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/uset.h>
#include <unicode/uversion.h>

namespace tallyroom::TextOrder {

namespace {

constexpr char16_t firstPrintable = u' ';
constexpr char16_t lastPrintable = u'~';

struct CloseCollator {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using CollatorPtr = std::unique_ptr<UCollator, CloseCollator>;

struct CloseSet {
    void operator()(USet* set) const { uset_close(set); }
};

CollatorPtr openCollator() {
    UErrorCode status = U_ZERO_ERROR;
    CollatorPtr collator(ucol_open("", &status)); // the root's, not the user's
    if (U_SUCCESS(status))
        ucol_setAttribute(collator.get(), UCOL_STRENGTH, UCOL_SECONDARY, &status);
    if (U_FAILURE(status))
        throw RunError::make(ErrorNumber::outOfMemory);
    return collator;
}

int collated(QStringView left, QStringView right) {
    static const CollatorPtr collator = openCollator();
    return ucol_strcoll(collator.get(), left.utf16(), static_cast<int>(left.size()), right.utf16(),
                        static_cast<int>(right.size()));
}

using Ranks = std::array<signed char, lastPrintable + 1>;

// The places of the printable characters of ASCII in the collation; 0 for others. Each has its own
// weight and none of them joins with another, so that their places decide between whole texts.
Ranks findRanks() {
    QString characters;
    for (char16_t c = firstPrintable; c <= lastPrintable; ++c)
        characters += c;
    const auto before = [](QChar a, QChar b) {
        return collated(QStringView(&a, 1), QStringView(&b, 1)) < 0;
    };
    std::stable_sort(characters.begin(), characters.end(), before);
    Ranks ranks{};
    signed char rank = 1;
    for (qsizetype i = 0; i < characters.size(); ++i) {
        if (i > 0 && before(characters[i - 1], characters[i]))
            ++rank;
        ranks[characters[i].unicode()] = rank;
    }
    return ranks;
}

char16_t unitOf(QChar c) {
    return c.unicode();
}

char16_t unitOf(char c) {
    return static_cast<unsigned char>(c);
}

const Ranks& allRanks() {
    static const Ranks ranks = findRanks();
    return ranks;
}

int rankOf(char16_t unit, const Ranks& ranks) {
    return unit < ranks.size() ? ranks[unit] : 0;
}

template<typename View>
View withoutBlanksAtEnd(View text) {
    while (!text.empty() && unitOf(text.back()) == u' ')
        text.chop(1);
    return text;
}

template<typename View>
bool isPrintable(View text, const Ranks& ranks) {
    return std::all_of(text.begin(), text.end(),
                       [&ranks](auto c) { return rankOf(unitOf(c), ranks) != 0; });
}

// The order of texts of printable ASCII; nothing for others.
template<typename View>
std::optional<int> plainOrder(View left, View right) {
    const Ranks& ranks = allRanks();
    const auto common = std::min(left.size(), right.size());
    int order = 0;
    for (qsizetype i = 0; i < common; ++i) {
        const int a = rankOf(unitOf(left[i]), ranks);
        const int b = rankOf(unitOf(right[i]), ranks);
        if (a == 0 || b == 0)
            return std::nullopt;
        if (order == 0)
            order = a - b;
    }
    if (!isPrintable(left.sliced(common), ranks) || !isPrintable(right.sliced(common), ranks))
        return std::nullopt;
    return order != 0 ? order : static_cast<int>(left.size() - right.size());
}

// What the collation holds equal besides, such as "ß" and "ss", lies side by side.
int foldedOrder(const QString& left, const QString& right) {
    const int order = collated(left, right);
    return order != 0 ? order : left.compare(right);
}

char32_t foldedCharacter(char32_t character) {
    const auto code = static_cast<UChar32>(character);
    const UChar32 result = u_foldCase(code, U_FOLD_CASE_DEFAULT);
    return result < 128 && code >= 128 ? character : static_cast<char32_t>(result);
}

QString textOf(char32_t character) {
    return QString::fromUcs4(&character, 1);
}

// All characters that fold to the same; of the letters A to Z the one suffices.
QStringList spellingsOf(char32_t character) {
    if (character < 128)
        return {textOf(character)};
    const std::unique_ptr<USet, CloseSet> set(uset_openEmpty());
    uset_add(set.get(), static_cast<UChar32>(character));
    uset_closeOver(set.get(), USET_CASE_INSENSITIVE);
    QStringList result;
    for (int i = 0; i < uset_size(set.get()); ++i) {
        const UChar32 other = uset_charAt(set.get(), i);
        if (other >= 0 &&
            foldedCharacter(static_cast<char32_t>(other)) == foldedCharacter(character))
            result << textOf(static_cast<char32_t>(other));
    }
    return result;
}

} // namespace

QString folded(QStringView text) {
    QList<uint> characters = withoutBlanksAtEnd(text).toUcs4();
    for (uint& character : characters)
        character = foldedCharacter(character);
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()),
                             characters.size());
}

bool isSame(QStringView left, QStringView right) {
    return left == right || folded(left) == folded(right);
}

int compare(QStringView left, QStringView right) {
    const auto order = plainOrder(withoutBlanksAtEnd(left), withoutBlanksAtEnd(right));
    return order ? *order : foldedOrder(folded(left), folded(right));
}

int compare(QUtf8StringView left, QUtf8StringView right) {
    const auto order = plainOrder(withoutBlanksAtEnd(left), withoutBlanksAtEnd(right));
    return order ? *order : foldedOrder(folded(left.toString()), folded(right.toString()));
}

QStringList spellings(const QString& text) {
    constexpr qsizetype most = 1000;
    QStringList result{QString()};
    for (const char32_t character : text.toStdU32String()) {
        const QStringList endings = spellingsOf(character);
        if (result.size() * endings.size() > most)
            return {};
        QStringList longer;
        for (const QString& beginning : std::as_const(result)) {
            for (const QString& ending : endings)
                longer << beginning + ending;
        }
        result = std::move(longer);
    }
    return result;
}

QString version() {
    UVersionInfo numbers{};
    u_getVersion(numbers);
    std::array<char, U_MAX_VERSION_STRING_LENGTH> text{};
    u_versionToString(numbers, text.data());
    return QString::fromLatin1(text.data());
}

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c < u'\x80'; });
}

} // namespace tallyroom::TextOrder
