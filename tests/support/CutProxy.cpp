#include "tests/support/CutProxy.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace tallyroom {

namespace {

constexpr int longestWait = 5; // milliseconds; then the thread looks what it has been told

int required(int result) {
    if (result < 0)
        throw std::runtime_error("the proxy has no socket");
    return result;
}

int connectTo(const QString& path) {
    sockaddr_un address{AF_UNIX, {}};
    const QByteArray native = QFile::encodeName(path);
    std::copy_n(native.constData(),
                std::min<std::size_t>(native.size(), sizeof(address.sun_path) - 1),
                address.sun_path);
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return server;
    close(server);
    return -1;
}

} // namespace

CutProxy::CutProxy(QString server)
    : m_server(std::move(server)),
      m_listener(required(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))) {
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t size = sizeof address;
    auto* native = reinterpret_cast<sockaddr*>(&address);
    required(bind(m_listener, native, size));
    required(listen(m_listener, SOMAXCONN));
    required(getsockname(m_listener, native, &size));
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { serve(); });
}

CutProxy::~CutProxy() {
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_thread.join();
    cutAll();
    close(m_listener);
}

void CutProxy::setDelay(std::chrono::milliseconds delay) {
    const std::lock_guard lock(m_mutex);
    m_delay = delay;
}

void CutProxy::cutAfter(Direction direction, qint64 bytes) {
    const std::lock_guard lock(m_mutex);
    m_counted = {};
    m_cut = {direction, bytes};
}

void CutProxy::countAnew() {
    const std::lock_guard lock(m_mutex);
    m_counted = {};
    m_cut.reset();
}

qint64 CutProxy::counted(Direction direction) const {
    const std::lock_guard lock(m_mutex);
    return m_counted[direction];
}

bool CutProxy::isCutDue() const {
    const std::lock_guard lock(m_mutex);
    return m_cut.has_value();
}

void CutProxy::serve() {
    for (;;) {
        waitForWork();
        const std::lock_guard lock(m_mutex);
        if (m_isOver)
            return;
        accept();
        for (Link& link : m_links) {
            for (Way& way : link.ways) {
                read(link, way);
                write(link, way);
            }
        }
        removeEnded();
    }
}

// Until the first piece has been held long enough.
int CutProxy::waitingTime() const {
    int shortest = longestWait;
    for (const Link& link : m_links) {
        for (const Way& way : link.ways) {
            if (way.held.empty())
                continue;
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(way.held.front().first - Clock::now());
            shortest = std::clamp(static_cast<int>(left.count()), 0, shortest);
        }
    }
    return shortest;
}

void CutProxy::waitForWork() {
    std::vector<pollfd> sockets{{m_listener, POLLIN, 0}};
    int time = 0;
    {
        const std::lock_guard lock(m_mutex);
        time = waitingTime();
        for (const Link& link : m_links) {
            for (const Way& way : link.ways)
                sockets.push_back({way.from, POLLIN, 0});
        }
    }
    poll(sockets.data(), sockets.size(), time);
}

void CutProxy::accept() {
    pollfd asked{m_listener, POLLIN, 0};
    if (poll(&asked, 1, 0) != 1)
        return;
    const int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    const int server = connectTo(m_server);
    constexpr int on = 1; // what is forwarded is not to wait for more
    setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    m_links.push_back({{{{client, server, ToServer, {}}, {server, client, ToClient, {}}}}});
    m_links.back().isOver = server < 0;
}

void CutProxy::read(Link& link, Way& way) {
    QByteArray piece(1 << 16, Qt::Uninitialized);
    const ssize_t size = recv(way.from, piece.data(), piece.size(), MSG_DONTWAIT);
    if (size > 0) {
        piece.truncate(size);
        const auto delay = way.direction == ToServer ? m_delay : std::chrono::milliseconds(0);
        way.held.emplace_back(Clock::now() + delay, piece);
    } else if (size == 0 || (errno != EAGAIN && errno != EINTR)) {
        link.isOver = true;
    }
}

void CutProxy::write(Link& link, Way& way) {
    while (!link.isOver && !way.held.empty() && way.held.front().first <= Clock::now()) {
        QByteArray& piece = way.held.front().second;
        const qsizetype size = allowed(way.direction, piece.size());
        const ssize_t sent =
            size == 0 ? 0 : send(way.to, piece.constData(), size, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent < 0)
            return;
        noteWritten(way.direction, sent);
        piece.remove(0, sent);
        if (!piece.isEmpty())
            return;
        way.held.pop_front();
    }
}

qsizetype CutProxy::allowed(Direction direction, qsizetype size) const {
    return m_cut && m_cut->first == direction
               ? std::min<qsizetype>(size, m_cut->second - m_counted[direction])
               : size;
}

void CutProxy::noteWritten(Direction direction, qsizetype size) {
    m_counted[direction] += size;
    if (m_cut && m_cut->first == direction && m_counted[direction] >= m_cut->second) {
        m_cut.reset();
        for (Link& link : m_links)
            link.isOver = true;
    }
}

void CutProxy::cutAll() {
    for (Link& link : m_links)
        link.isOver = true;
    removeEnded();
}

void CutProxy::removeEnded() {
    std::erase_if(m_links, [](const Link& link) {
        if (link.isOver) {
            for (const Way& way : link.ways)
                close(way.from);
        }
        return link.isOver;
    });
}

} // namespace tallyroom
