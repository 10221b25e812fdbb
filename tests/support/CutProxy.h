// Stands between a program and the test program's server, as a network that is slow or breaks.
#pragma once

#include <QString>
#include <array>
#include <chrono>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <thread>

namespace tallyroom {

class CutProxy {
public:
    enum Direction { ToServer, ToClient };

    // `server` is the path of a socket. Throws std::runtime_error.
    explicit CutProxy(QString server);
    ~CutProxy();
    CutProxy(const CutProxy&) = delete;
    CutProxy& operator=(const CutProxy&) = delete;

    int port() const { return m_port; } // on 127.0.0.1

    // What goes to the server is kept so long. What is sent together counts once.
    void setDelay(std::chrono::milliseconds delay);

    // Counts the bytes anew. Once so many have gone that way, all connections are cut in both
    // directions, and what was on its way is lost; new ones are served as before.
    void cutAfter(Direction direction, qint64 bytes);
    void countAnew();
    qint64 counted(Direction direction) const;
    bool isCutDue() const; // none has been made yet

private:
    using Clock = std::chrono::steady_clock;
    struct Way {
        int from;
        int to;
        Direction direction;
        std::deque<std::pair<Clock::time_point, QByteArray>> held;
    };
    struct Link {
        std::array<Way, 2> ways;
        bool isOver = false;
    };

    void serve();
    int waitingTime() const;
    void waitForWork();
    void accept();
    void read(Link& link, Way& way);
    void write(Link& link, Way& way);
    qsizetype allowed(Direction direction, qsizetype size) const;
    void noteWritten(Direction direction, qsizetype size);
    void cutAll();
    void removeEnded();

    QString m_server;
    int m_listener = -1;
    int m_port = 0;
    mutable std::mutex m_mutex; // of all below
    std::list<Link> m_links;
    std::chrono::milliseconds m_delay{0};
    std::array<qint64, 2> m_counted{};
    std::optional<std::pair<Direction, qint64>> m_cut;
    bool m_isOver = false;
    std::thread m_thread;
};

} // namespace tallyroom
