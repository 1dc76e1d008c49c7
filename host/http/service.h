// Answers requests on a listening socket. Each connection has one request and little time to make
// it; when there are too many at once, the one goes that has been silent the longest.
#pragma once

#include <httplib.h>

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
    void Accept();
    void Admit(Descriptor socket);
    void MakeRoom();
    void Talk(Descriptor socket);

    const Descriptor listening_;
    const Descriptor ending_;  ///< can be read once the service ends
    const Http::Handler handler_;
    std::mutex mutex_;
    std::list<int> asking_;     ///< connections whose requests are not there yet, oldest first
    std::size_t admitted_ = 0;  ///< connections that are not through yet
    std::unique_ptr<httplib::ThreadPool> threads_;
    std::thread acceptor_;
};

}  // namespace veldrin
