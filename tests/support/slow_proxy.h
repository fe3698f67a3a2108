// A way to a server that delays, stalls and ends, as networks do.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace zorvel::test {

// Listens at a port of 127.0.0.1 and passes everything on to a unix socket, in both directions.
class SlowProxy {
  public:
    explicit SlowProxy(std::string socket_path) : target_(std::move(socket_path)) {
        listener_ = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
        listen(listener_, 16);
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
        accepting_ = std::thread([this] { Accept(); });
    }
    ~SlowProxy() {
        ended_ = true;
        accepting_.join();
        for (std::thread& thread : threads_)
            thread.join();
        close(listener_);
    }
    SlowProxy(const SlowProxy&) = delete;
    SlowProxy& operator=(const SlowProxy&) = delete;

    std::atomic<bool> stalled{false};  // nothing is passed on
    std::atomic<int> cut_behind{-1};   // so many more answers, then the connection ends
    std::atomic<int> busy{0};          // so many searches that went well end with "busy" instead
    std::atomic<std::chrono::milliseconds> delay{{}};  // of what the server says

    std::atomic<int> answers{0};  // that were passed on

    std::string url(const std::string& scheme = "ldap") const {
        return scheme + "://127.0.0.1:" + std::to_string(port_);
    }

  private:
    void Accept() {
        while (!ended_) {
            pollfd ready{listener_, POLLIN, 0};
            if (poll(&ready, 1, 20) <= 0) continue;
            const int client = accept(listener_, nullptr, nullptr);
            threads_.emplace_back([this, client] { Pass(client); });
        }
    }
    void Pass(int client) {
        const int at_once = 1;
        setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &at_once, sizeof at_once);
        const int server = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        target_.copy(address.sun_path, sizeof address.sun_path - 1);
        bool open = connect(server, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        while (open && !ended_) {
            std::array<pollfd, 2> ready{{{client, POLLIN, 0}, {server, POLLIN, 0}}};
            if (stalled || poll(ready.data(), ready.size(), 20) <= 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                continue;
            }
            if (ready[0].revents != 0) open = Copy(client, server);
            if (open && ready[1].revents != 0) {
                ++answers;
                std::this_thread::sleep_for(delay.load());
                if (cut_behind == 0) break;
                if (cut_behind > 0) --cut_behind;
                open = Copy(server, client, &busy);
            }
        }
        close(client);
        close(server);
    }
    // A search that ends well says so with the result code 0 (RFC 4511, in BER); 51 is "busy".
    static bool Copy(int from, int to, std::atomic<int>* busy = nullptr) {
        constexpr std::string_view kDone("\x65\x07\x0a\x01\x00", 5);
        constexpr char kBusy = 51;
        std::array<char, 65536> bytes{};
        const ssize_t size = read(from, bytes.data(), bytes.size());
        const auto* const done = std::search(bytes.begin(), bytes.end(), kDone.begin(), kDone.end());
        if (busy != nullptr && *busy > 0 && done != bytes.end()) {
            --*busy;
            bytes.at(static_cast<std::size_t>(done - bytes.begin()) + kDone.size() - 1) = kBusy;
        }
        return size > 0 && write(to, bytes.data(), static_cast<std::size_t>(size)) == size;
    }

    std::string target_;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> ended_{false};
    std::thread accepting_;
    std::vector<std::thread> threads_;  // one a connection
};

}  // namespace zorvel::test
