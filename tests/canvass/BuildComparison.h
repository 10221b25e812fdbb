// The two ways of building the board, on one made-up data folder.
#pragma once

#include "tests/support/DataFolder.h"
#include "tests/support/FakeHost.h"

#include <random>

namespace tallyroom {

class BuildComparison {
public:
    // Makes the folder, or the site, of this number and builds its board both ways.
    explicit BuildComparison(unsigned seed, bool onServer = testsOnServer());

    // Whether the quick way came to an end.
    bool isQuick() const { return m_quick; }
    // The first cells that differ, in words; empty when there are none.
    QString difference() const;

private:
    void add(const std::string& statement);
    void addEmployees();
    void addQualifications();
    void addHistory();
    void build();
    QStringList cells() const;

    int upTo(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    QString anyCode();
    QString anyAmount(bool isWhole);

    std::mt19937 m_random;
    std::string m_made; // statements
    DataFolder m_folder;
    FakeHost m_host;
    bool m_quick = false;
    int m_failures = 0; // statements of the other way
    QStringList m_quickCells;
    QStringList m_cells;
};

} // namespace tallyroom
