// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarvolt {

/// The form of sound samples.
struct WaveFormat {
  int samplesPerSecond = 44100;  ///< frames a second; a frame has a sample of each side
  int bits = 16;                 ///< of a sample; only 16 is ever opened
  bool stereo = true;

  /// Bytes of a frame.
  constexpr int FrameBytes() const { return bits / 8 * (stereo ? 2 : 1); }

  bool operator==(const WaveFormat&) const = default;
};

/// The buffers of an input.
struct WaveBuffers {
  std::int32_t bytes = 0;  ///< of each; a whole number of frames
  double latency = 20;     ///< milliseconds that a filled one may wait in the driver; each wake-up costs
};

/// A filled buffer; good only inside the event that brought it.
using WaveHandle = const void*;

/// A sound input. Its events run on the event loop, never inside a call. Samples are little-endian signed 16-bit, left
/// and right in turn in stereo, and every buffer begins with a left one.
class WaveInDevice {
 public:
  virtual ~WaveInDevice() = default;

  /// Opens the input for buffers of exactly these bytes, whatever the driver delivers. False, with the reason in `why`,
  /// when that cannot be. Closes what was open before.
  virtual bool Open(const WaveFormat& format, const WaveBuffers& buffers, std::string& why) = 0;

  /// Begins to deliver, with a fresh buffer.
  virtual void Start() = 0;

  /// Nothing is delivered until Restart, and what is heard meanwhile is lost.
  virtual void Pause() = 0;
  virtual void Restart() = 0;

  /// Ends the delivery; Start begins anew. No event follows.
  virtual void Stop() = 0;

  /// Lets the input go. No event follows.
  virtual void Close() = 0;

  /// Bytes in a filled buffer.
  virtual std::size_t ParseWaveHeader(WaveHandle handle) const = 0;

  /// Copies at most `count` bytes of a filled buffer; returns how many.
  virtual std::size_t CopyWaveHeader(WaveHandle handle, void* destination, std::size_t count) const = 0;

  /// Milliseconds for which a filled buffer has waited since its last frame was heard, as well as the driver can tell.
  virtual double Waited(WaveHandle handle) const = 0;

  std::function<void(WaveHandle)> onBuffer;  ///< a buffer was filled

  /// So many buffers were lost since the last time because nobody took them in time.
  std::function<void(std::int64_t buffers)> onOverRun;

  /// The input has failed or vanished: no further event until it is opened again.
  std::function<void(const std::string& why)> onLost;

  /// The input has come to its end, as a file does: no further event.
  std::function<void()> onEnded;
};

/// The sound inputs of the machine.
class WaveInDevices {
 public:
  virtual ~WaveInDevices() = default;

  /// The names of all inputs that are there now, fit to be kept: they stay the same when an input is unplugged and
  /// comes back. Cheap when there is none. A name that needs no listing, such as that of a file, is not among them.
  virtual std::vector<std::string> List() = 0;

  /// True for a name that can be opened now, listed or not.
  virtual bool IsThere(const std::string& name) = 0;

  /// The one format that an input has by its nature, as a file has; nothing for one that can be asked for several, or
  /// is not there.
  virtual std::optional<WaveFormat> FixedFormat(const std::string& name) = 0;

  /// Those of `asked` that an input offers; empty when it is not there or in use. It is opened for that.
  virtual std::vector<WaveFormat> Formats(const std::string& name, std::span<const WaveFormat> asked) = 0;

  /// An input by its name, closed. Never null: one that is not there fails when it is opened.
  virtual std::unique_ptr<WaveInDevice> Make(const std::string& name) = 0;
};

}  // namespace tarvolt
