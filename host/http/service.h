// Answers requests on a listening socket. Each connection has one request and little time to make
// it, and even less while others wait for their turn.
#pragma once

#include <httplib.h>

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

#include "host/descriptor.h"
#include "host/http/connection.h"
#include "host/http/http.h"

namespace veldrin {

class Service {
  public:
    Service(Descriptor listening, Http::Handler handler);
    /// Waits for handlers that run.
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

  private:
    struct Asker {
        int number;
        HttpClock::time_point since;
    };

    void Accept();
    bool CutShort();
    void Admit(Descriptor socket);
    void Talk(Descriptor socket);

    const Descriptor listening_;
    const Descriptor ending_;  ///< can be read once the service ends
    const Http::Handler handler_;
    std::mutex mutex_;
    std::list<Asker> asking_;  ///< connections that a thread reads a request from
    std::size_t busy_ = 0;     ///< threads that have a connection
    std::size_t waiting_ = 0;  ///< connections that no thread has time for
    std::atomic<bool> ends_ = false;
    std::unique_ptr<httplib::ThreadPool> threads_;
    std::thread acceptor_;
};

}  // namespace veldrin
