#pragma once

#include <QByteArray>
#include <QString>

#include <arpa/inet.h>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace tests {

/// Stands on the loopback between one client and a server and keeps every byte of both ways.
class RecordingProxy {
public:
    explicit RecordingProxy(int serverPort)
        : mListening(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), mServerPort(serverPort) {
        sockaddr_in place = placeOf(0);
        socklen_t size = sizeof place;
        if (bind(mListening, reinterpret_cast<sockaddr *>(&place), size) == 0 && listen(mListening, 8) == 0) {
            getsockname(mListening, reinterpret_cast<sockaddr *>(&place), &size);
        }
        mPort = ntohs(place.sin_port);
        mThread = std::thread([this] { run(); });
    }
    ~RecordingProxy() {
        ::shutdown(mListening, SHUT_RDWR);
        {
            std::lock_guard<std::mutex> hold(mLock);
            mIsEnding = true;
            ::shutdown(mClient, SHUT_RDWR);
        }
        mThread.join();
        ::close(mListening);
    }
    RecordingProxy(const RecordingProxy &) = delete;
    RecordingProxy &operator=(const RecordingProxy &) = delete;

    int port() const { return mPort; }
    QByteArray toServer() const { return kept(mToServer); }
    QByteArray toClient() const { return kept(mToClient); }

private:
    static sockaddr_in placeOf(int port) {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_port = htons(static_cast<uint16_t>(port));
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return place;
    }
    QByteArray kept(const QByteArray &bytes) const {
        std::lock_guard<std::mutex> hold(mLock);
        return QByteArray(bytes.constData(), bytes.size());
    }
    /// One client after the other.
    void run() {
        for (int client = 0; (client = accept(mListening, nullptr, nullptr)) >= 0;) {
            const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
            const sockaddr_in place = placeOf(mServerPort);
            {
                std::lock_guard<std::mutex> hold(mLock);
                mClient = client;
            }
            if (!mIsEnding && connect(server, reinterpret_cast<const sockaddr *>(&place), sizeof place) == 0) {
                while (pass(client, server)) {
                }
            }
            {
                std::lock_guard<std::mutex> hold(mLock);
                mClient = -1;
            }
            ::close(client);
            ::close(server);
        }
    }
    bool pass(int client, int server) {
        pollfd ends[]{{client, POLLIN, 0}, {server, POLLIN, 0}};
        if (poll(ends, 2, -1) < 0) {
            return false;
        }
        return (!ends[0].revents || move(client, server, mToServer)) &&
               (!ends[1].revents || move(server, client, mToClient));
    }
    bool move(int from, int to, QByteArray &record) {
        char bytes[65536];
        const ssize_t size = recv(from, bytes, sizeof bytes, 0);
        if (size <= 0) {
            return false;
        }
        {
            std::lock_guard<std::mutex> hold(mLock);
            record.append(bytes, static_cast<int>(size));
        }
        for (ssize_t sent = 0; sent < size;) {
            const ssize_t part = send(to, bytes + sent, static_cast<size_t>(size - sent), MSG_NOSIGNAL);
            if (part <= 0) {
                return false;
            }
            sent += part;
        }
        return true;
    }

    const int mListening;
    const int mServerPort;
    int mPort = 0;
    mutable std::mutex mLock; ///< guards what follows
    bool mIsEnding = false;
    int mClient = -1;
    QByteArray mToServer;
    QByteArray mToClient;
    std::thread mThread;
};

} // namespace tests
