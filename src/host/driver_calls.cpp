// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/driver_calls.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace tarvolt {
namespace {

using Clock = std::chrono::steady_clock;

}  // namespace

/// The drivers that have not answered yet; shared with the threads, which may outlive the program's own use of them.
struct DriverCalls::Out {
  std::mutex mutex;
  std::condition_variable changed;
  const Clock::duration hangsAfter;
  std::map<std::string, Clock::time_point> drivers;  ///< and when they were asked

  explicit Out(Clock::duration longest) : hangsAfter(longest) {}

  bool Hangs(const std::string& driver) const {
    const auto found = drivers.find(driver);
    return found != drivers.end() && Clock::now() - found->second > hangsAfter;
  }

  /// False when the driver has not answered until then.
  bool WaitFor(const std::string& driver, std::unique_lock<std::mutex>& lock, Clock::time_point until) {
    return changed.wait_until(lock, until, [&] { return drivers.count(driver) == 0; });
  }
};

DriverCalls::DriverCalls(std::chrono::milliseconds hangsAfter) : out_(std::make_shared<Out>(hangsAfter)) {}

DriverCalls::~DriverCalls() = default;

bool DriverCalls::Run(const std::string& driver, std::chrono::milliseconds patience, std::function<void()> call) {
  std::unique_lock lock(out_->mutex);
  const Clock::time_point until = Clock::now() + patience;
  if (out_->Hangs(driver) || !out_->WaitFor(driver, lock, until)) return false;
  const auto ask = [out = out_, driver, call = std::move(call)] {
    call();
    const std::lock_guard done(out->mutex);
    out->drivers.erase(driver);
    out->changed.notify_all();
  };
  try {
    std::thread(ask).detach();
  } catch (const std::system_error&) {
    return false;  // the machine has no thread left: as if there were no answer
  }
  out_->drivers[driver] = Clock::now();  // the thread cannot erase it before: the lock is held here
  return out_->WaitFor(driver, lock, until);
}

}  // namespace tarvolt
