// An ordering while it is being edited.
#pragma once

#include "ordering/SettingsText.h"

#include <QString>
#include <vector>

namespace tallyroom {

// The elements in their rank, which of them take part, and the settings text that keeps it all.
// Positions count from 0.
class OrderingDraft {
public:
    enum Direction { Ascending, Descending };

    // A new ordering: the sixteen elements in their usual order, none of them taking part.
    OrderingDraft();

    // Takes over a stored settings text. Its elements come in their stored sequence, below those
    // that it does not mention. Whatever in it does not read as a state or a direction counts as
    // not taking part, ascending.
    void load(const QString& stored);

    int count() const { return static_cast<int>(m_elements.size()); }
    const QString& name(int position) const { return at(position).name; }
    bool takesPart(int position) const { return at(position).takesPart; }
    Direction direction(int position) const;
    bool anyTakesPart() const;

    void setTakesPart(int position, bool takesPart);
    void setDirection(int position, Direction direction);

    // Exchanges two neighbours and numbers all elements anew.
    void exchange(int position, int other);

    // "Seniority Number (Asc) / Employee Name (Desc)"
    QString summary() const;

    // The settings text to store, with the rank of every element.
    QString detailsToStore();

private:
    struct Element {
        QString name;
        bool takesPart = false;
    };
    const Element& at(int position) const {
        Q_ASSERT(position >= 0 && position < count());
        return m_elements[static_cast<std::size_t>(position)];
    }
    Element& at(int position) { return const_cast<Element&>(std::as_const(*this).at(position)); }

    std::vector<Element> m_elements;
    SettingsText m_details;
};

} // namespace tallyroom
