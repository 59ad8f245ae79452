// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_sound.h"

#include <algorithm>
#include <cstring>

namespace tarvolt {

class SimSound::Input final : public WaveInDevice {
 public:
  Input(SimSound& sound, std::string name) : sound_(sound), inputs_(sound.inputs_), name_(std::move(name)) {
    timer_ = sound_.loop_.MakeTimer([this] { Deliver(); });
    inputs_->insert(this);
  }
  ~Input() override { inputs_->erase(this); }

  bool Open(const WaveFormat& format, const WaveBuffers& buffers, std::string& why) override {
    Close();
    why = sound_.refusal_;
    if (why.empty() && !sound_.IsThere(name_)) why = "No such device";
    if (!why.empty()) return false;
    format_ = format;
    framesOfBuffer_ = buffers.bytes / format.FrameBytes();
    buffer_.assign(static_cast<std::size_t>(buffers.bytes) / 2, 0);
    open_ = true;
    ++sound_.openings_;
    sound_.lastBufferBytes_ = buffers.bytes;
    return true;
  }

  void Start() override {
    next_ = sound_.loop_.Now() * format_.samplesPerSecond / 1000;
    Arm();
  }
  void Pause() override { Stop(); }
  void Restart() override { Start(); }
  void Stop() override { timer_->SetEnabled(false); }
  void Close() override {
    Stop();
    open_ = false;
  }

  std::size_t ParseWaveHeader(WaveHandle handle) const override { return BytesOf(handle).size() * 2; }
  std::size_t CopyWaveHeader(WaveHandle handle, void* destination, std::size_t count) const override {
    const std::size_t bytes = std::min(count, ParseWaveHeader(handle));
    std::memcpy(destination, BytesOf(handle).data(), bytes);
    return bytes;
  }

  double Waited(WaveHandle) const override { return static_cast<double>(sound_.loop_.Now() - DueAt(next_)); }

  void PullOut() {
    if (!open_) return;
    Close();
    sound_.loop_.Post([held = onLost] {
      if (held) held("No such device");
    });
  }

  const std::string& Name() const { return name_; }
  bool IsOpen() const { return open_; }

 private:
  static const std::vector<std::int16_t>& BytesOf(WaveHandle handle) {
    return *static_cast<const std::vector<std::int16_t>*>(handle);
  }

  std::int64_t DueAt(std::int64_t frame) const {
    const std::int64_t rate = format_.samplesPerSecond;
    return (frame * 1000 + rate - 1) / rate;
  }

  void Arm() {
    const auto late = static_cast<std::int64_t>(sound_.random_.Below(sound_.jitter_.count() + 1));
    const std::int64_t wait = DueAt(next_ + framesOfBuffer_) + late - sound_.loop_.Now();
    timer_->SetInterval(static_cast<int>(std::max<std::int64_t>(1, wait)));
    timer_->SetEnabled(true);
  }

  void Deliver() {
    timer_->SetEnabled(false);
    Arm();
    while (open_ && timer_->Enabled() && DueAt(next_ + framesOfBuffer_) <= sound_.loop_.Now()) {
      Fill();
      if (sound_.stalled_.count(name_) > 0 || !onBuffer) continue;
      onBuffer(&buffer_);
    }
    if (timer_->Enabled()) Arm();
  }

  void Fill() {
    const Signal& signal = sound_.signals_.at(name_);
    std::int64_t frames = framesOfBuffer_;
    if (sound_.wrongSizes_) frames = static_cast<std::int64_t>(sound_.random_.Below(2 * framesOfBuffer_ + 1));
    buffer_.clear();
    for (std::int64_t i = 0; i < frames; ++i) {
      const auto [left, right] = signal(next_ + i);
      buffer_.push_back(static_cast<std::int16_t>(left));
      if (format_.stereo) buffer_.push_back(static_cast<std::int16_t>(right));
    }
    if (sound_.wrongSizes_ && sound_.random_.Chance(0.5)) buffer_.push_back(1);
    next_ += framesOfBuffer_;
  }

  SimSound& sound_;
  std::shared_ptr<std::set<Input*>> inputs_;
  std::string name_;
  std::unique_ptr<Timer> timer_;
  WaveFormat format_;
  std::int64_t framesOfBuffer_ = 1;
  std::int64_t next_ = 0;  ///< frame that the next buffer begins with
  std::vector<std::int16_t> buffer_;
  bool open_ = false;
};

SimSound::SimSound(SimLoop& loop, std::uint64_t seed) : loop_(loop), random_(seed) {}

SimSound::~SimSound() = default;

std::vector<std::string> SimSound::List() {
  std::vector<std::string> names;
  for (const auto& [name, signal] : signals_) names.push_back(name);
  return names;
}

std::optional<WaveFormat> SimSound::FixedFormat(const std::string& name) {
  const auto found = fixed_.find(name);
  return found == fixed_.end() ? std::nullopt : std::optional(found->second);
}

std::vector<WaveFormat> SimSound::Formats(const std::string& name, std::span<const WaveFormat> asked) {
  if (!IsThere(name)) return {};
  return {asked.begin(), asked.end()};
}

std::unique_ptr<WaveInDevice> SimSound::Make(const std::string& name) {
  return std::make_unique<Input>(*this, name);
}

void SimSound::Plug(const std::string& name, Signal signal) {
  signals_[name] = std::move(signal);
}

void SimSound::Unplug(const std::string& name) {
  for (Input* input : *inputs_) {
    if (input->Name() == name) input->PullOut();
  }
  signals_.erase(name);
}

void SimSound::Heal() {
  stalled_.clear();
  wrongSizes_ = false;
  refusal_.clear();
  jitter_ = std::chrono::milliseconds(0);
}

int SimSound::OpenNow() const {
  return static_cast<int>(
      std::count_if(inputs_->begin(), inputs_->end(), [](const Input* input) { return input->IsOpen(); }));
}

}  // namespace tarvolt
