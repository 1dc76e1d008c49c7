// Taking items apart, on a thread of its own: it takes a moment, and longer where the file does not
// answer.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

#include "host/engine/item.h"
#include "host/engine/worker.h"

namespace veldrin {

class Disposal : public std::enable_shared_from_this<Disposal> {
  public:
    /// An item that comes here when nobody has it any more, on whatever thread that is.
    std::shared_ptr<Item> Share(std::unique_ptr<Item> item);

  private:
    struct Pile {
        std::mutex mutex;
        std::vector<std::unique_ptr<Item>> items;
        bool isBeingCleared = false;
    };
    void Take(std::unique_ptr<Item> item);
    static void Clear(const std::shared_ptr<Pile>& pile);

    std::mutex mutex_;
    Worker worker_;
    std::chrono::steady_clock::time_point began_;
    std::shared_ptr<Pile> pile_ = std::make_shared<Pile>();
};

}  // namespace veldrin
