#include "canvass/BoardControls.h"

#include "ui_Tallyroom.h"

namespace tallyroom::BoardControls {

namespace {

constexpr int codeColumn = 0;
constexpr int nameColumn = 1;

} // namespace

QStringList selectedEmployees(const Ui::Tallyroom& ui) {
    QStringList codes;
    for (const QStringList& row : ui.Grid->selectedTable().rows)
        codes.append(row.value(codeColumn));
    return codes;
}

QStringList selectedNames(const Ui::Tallyroom& ui) {
    QStringList names;
    for (const QStringList& row : ui.Grid->selectedTable().rows)
        names.append(row.value(nameColumn));
    return names;
}

Offer offer(const Ui::Tallyroom& ui, const std::optional<TotallingPeriod>& period) {
    Offer offer;
    offer.names = selectedNames(ui);
    offer.breakOut = ui.mnuBreakOut->isChecked();
    offer.amount = ui.Text1->text();
    offer.doubleAmount = ui.Text2->text();
    offer.canvassDate = ui.to_date->text();
    offer.period = period;
    offer.today = Dates::today();
    return offer;
}

} // namespace tallyroom::BoardControls
