// Makes operations on the database files fail, as a bad or a full disk would.
#pragma once

namespace tallyroom {

// Sits between the database engine and the file system for every file opened while an instance
// lives. One instance at a time.
class FaultyFiles {
public:
    FaultyFiles();
    ~FaultyFiles();
    FaultyFiles(const FaultyFiles&) = delete;
    FaultyFiles& operator=(const FaultyFiles&) = delete;

    // The n-th operation from now on fails, n counted from 1; 0 lets all succeed.
    void failAt(int n);
    // As long as the disk is full, every write fails for that.
    void setFull(bool full);
    // Operations since the last call of failAt().
    int operations() const;
    // Of these, files removed in a way that a power cut may take back: a journal that comes back
    // undoes what was committed. One that a crash had left behind does not count.
    int looseRemovals() const;
    // Milliseconds since then for which the engine waited for others to let go of a file. They are
    // counted and do not pass.
    int waited() const;
};

} // namespace tallyroom
