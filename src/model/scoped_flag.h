// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tarvolt {

/// Sets a flag, and takes it back however the scope ends.
class ScopedFlag {
 public:
  explicit ScopedFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = false; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& flag_;
};

}  // namespace tarvolt
