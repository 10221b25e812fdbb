// Amounts and dates as users type them.
#include "common/DateParser.h"
#include "common/Dates.h"
#include "common/Units.h"
#include "fuzz/Fuzz.h"

using namespace tallyroom;

namespace {

void tryDates(const QString& text) {
    const auto date = Dates::parse(text);
    require(Dates::isDate(text) == date.has_value(), "a date is what can be read as one");
    if (!date || !Dates::isInRange(*date))
        return;
    require(Dates::parse(Dates::toText(*date)) == date, "a date is read as it was written");
    require(Dates::fromIso(Dates::toIso(*date)) == date, "a date is kept as it is");
    Dates::format(*date, text);
}

void tryAmounts(const QString& text) {
    std::int32_t minutes = 0;
    IsTime(text);
    if (errorOf([&] { minutes = TimeConversion::toMinutes(text); }) != 0)
        return;
    require(TimeConversion::toMinutes(TimeConversion::toTimeText(minutes)) == minutes,
            "an amount is read as it was shown");
}

void tryUnits(const QString& text) {
    for (const char16_t* from : {u"MINUTES", u"TIME", u"DECIMAL", u"PERCENT"}) {
        for (const char16_t* to : {u"1", u"2", u"3", u"4"})
            errorOf([&] {
                Variant value(text);
                QString target = QString::fromUtf16(to);
                QString source = QString::fromUtf16(from);
                ConvertUnits(value, target, source);
            });
    }
    errorOf([&] { TimeConversion::timeAsDate(text); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(bytesOf(data, size));
    tryDates(text);
    tryAmounts(text);
    tryUnits(text);
    return 0;
}
