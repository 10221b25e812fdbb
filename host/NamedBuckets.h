// Choices of employees that a user has given names, kept with what windows remember of the user.
#pragma once

#include "reports/HostData.h"

#include <variant>

namespace tallyroom::host {

// Who has all of these; what is empty holds for everybody.
struct BucketCriteria {
    QString department;
    QString shift;
    QString qualification;

    bool isEmpty() const;
    bool hold(const Employee& employee) const;
};

struct NamedBucket {
    QString name;
    // Codes of the chosen, or criteria, so that who joins a department later is in its bucket.
    std::variant<QStringList, BucketCriteria> content;

    // One for each employee.
    std::vector<bool> members(const std::vector<Employee>& employees) const;
};

class NamedBuckets {
public:
    // Who has saved none finds the master user's, none of them chosen. Without a user there are
    // none, and none can be kept. A text that is no longer understood
    // counts as none.
    NamedBuckets(const QString& dataFolder, const QString& user);

    bool canKeep() const { return !m_user.isEmpty(); }
    const std::vector<NamedBucket>& all() const { return m_buckets; } // as people sort names
    const NamedBucket* find(const QString& name) const;               // in any case
    const NamedBucket* chosen() const { return find(m_chosen); }      // nothing: none by name

    // Each raises 3027 when it cannot be kept; nothing has changed then.
    void save(const NamedBucket& bucket); // in place of one of the same name
    void remove(const QString& name);
    void choose(const QString& name); // "" for none

private:
    void keep(std::vector<NamedBucket> buckets, const QString& chosen);

    QString m_dataFolder;
    QString m_user;
    std::vector<NamedBucket> m_buckets;
    QString m_chosen;
};

} // namespace tallyroom::host
