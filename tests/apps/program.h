// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarvolt {

/// A real program, started for a test. Killed when this is destroyed, and with the test itself. Every wait ends after
/// ten seconds.
class RunningProgram {
 public:
  /// `name` is that of one of our programs, or the whole path of another. The environment is that of the test, with
  /// `variables`, each KEY=VALUE, set besides.
  RunningProgram(const std::string& name, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& variables = {});
  ~RunningProgram();

  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  pid_t Id() const { return process_; }

  void Signal(int signal) const;

  /// Waits until `text` stands in the output; false when the program has ended without.
  bool WaitFor(const std::string& text);

  /// Waits for the end; the exit status, or nothing when it has not ended in time or was killed.
  std::optional<int> ExitStatus();

  /// What has been read of standard output and standard error so far; all of it after ExitStatus.
  const std::string& Output() const { return output_; }

  bool Printed(const std::string& text) const { return output_.find(text) != std::string::npos; }

 private:
  bool ReadMore(int milliseconds);
  bool HasEnded();
  void Drain();

  pid_t process_ = -1;
  int pipe_ = -1;
  std::string output_;
  std::optional<int> status_;  // as waitpid has it
};

/// Looks again and again until `condition` holds; false when it does not within ten seconds.
bool WaitUntil(const std::function<bool()>& condition);

}  // namespace tarvolt
