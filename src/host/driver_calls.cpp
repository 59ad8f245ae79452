#include "host/driver_calls.h"

#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

namespace tarvolt {

/// The drivers that have not answered yet; shared with the threads, which may outlive the program's own use of them.
struct DriverCalls::Out {
  std::mutex mutex;
  std::condition_variable changed;
  std::set<std::string> drivers;
};

DriverCalls::DriverCalls() : out_(std::make_shared<Out>()) {}

DriverCalls::~DriverCalls() = default;

bool DriverCalls::Run(const std::string& driver, std::chrono::milliseconds patience, std::function<void()> call) {
  std::unique_lock lock(out_->mutex);
  if (!out_->drivers.insert(driver).second) return false;
  std::thread([out = out_, driver, call = std::move(call)] {
    call();
    const std::lock_guard done(out->mutex);
    out->drivers.erase(driver);
    out->changed.notify_all();
  }).detach();
  return out_->changed.wait_for(lock, patience, [&] { return out_->drivers.count(driver) == 0; });
}

}  // namespace tarvolt
