// Bytes of a User Data Source into the recorder's end of the link, while a chart runs. The first byte picks the mode;
// each byte 0xFE in the input ends one data event.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "sources/uds_client.h"

namespace tarvolt {
namespace {

class NoClock final : public Clock {
 public:
  WallTime LocalNow() override { return {}; }
  ZoneInfo Zone() override { return {}; }
  double MonotonicMilliseconds() override { return 0; }
};

class NoFiles final : public FileSystem {
 public:
  std::unique_ptr<File> Open(const std::filesystem::path&, OpenMode, std::error_code& error) override {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
    return nullptr;
  }
  bool FileExists(const std::filesystem::path&) override { return false; }
  bool FolderExists(const std::filesystem::path&) override { return false; }
  void MakeFolders(const std::filesystem::path&, std::error_code&) override {}
  void Rename(const std::filesystem::path&, const std::filesystem::path&, std::error_code&) override {}
  void Remove(const std::filesystem::path&, std::error_code&) override {}
  std::vector<std::filesystem::path> ListFiles(const std::filesystem::path&, std::error_code&) override { return {}; }
};

class NoProcesses final : public Processes {
 public:
  bool IsRunning(std::string_view) override { return true; }
  bool StartMinimised(const std::string&, std::string&) override { return true; }
  bool SetPriority(PriorityClass, std::string&) override { return true; }
};

class NoDialogs final : public Dialogs {
 public:
  std::optional<std::string> AskOpenFile(const OpenFileRequest&) override { return std::nullopt; }
  std::optional<std::string> AskText(const TextRequest&) override { return std::nullopt; }
  void ShowMessage(const std::string&, const std::string&) override {}
  Answer Ask(const Question& question) override { return question.defaultAnswer; }
  std::optional<std::string> AskSaveFile(const SaveFileRequest&) override { return std::nullopt; }
};

class NoSound final : public WaveInDevices {
 public:
  std::vector<std::string> List() override { return {}; }
  bool IsThere(const std::string&) override { return false; }
  std::optional<WaveFormat> FixedFormat(const std::string&) override { return std::nullopt; }
  std::vector<WaveFormat> Formats(const std::string&, std::span<const WaveFormat>) override { return {}; }
  std::unique_ptr<WaveInDevice> Make(const std::string&) override { return std::make_unique<NoInput>(); }

 private:
  class NoInput final : public WaveInDevice {
   public:
    bool Open(const WaveFormat&, const WaveBuffers&, std::string&) override { return false; }
    void Start() override {}
    void Pause() override {}
    void Restart() override {}
    void Stop() override {}
    void Close() override {}
    std::size_t ParseWaveHeader(WaveHandle) const override { return 0; }
    std::size_t CopyWaveHeader(WaveHandle, void*, std::size_t) const override { return 0; }
    double Waited(WaveHandle) const override { return 0; }
  };
};

/// A connection that is up at once and hears what it is given.
class FedSocket final : public SocketControl {
 public:
  void Bind(const std::string&, std::uint16_t) override {}
  void Connect(const std::string&, std::uint16_t) override { connected_ = true; }
  bool IsConnected() const override { return connected_; }
  SocketEnd LocalEnd() const override { return {}; }
  SocketEnd RemoteEnd() const override { return {}; }
  void Write(std::string_view) override {}
  std::string ReadAvailable() override { return std::exchange(held_, {}); }
  void Disconnect() override { connected_ = false; }

  void Feed(std::string_view bytes) {
    if (!connected_) return;
    held_ = bytes;
    onDataArrival();
  }

 private:
  bool connected_ = false;
  std::string held_;
};

class NoMixer final : public Mixer {
 public:
  MixerInputs Inputs(const std::string&) override { return {}; }
  bool Select(const std::string&, int) override { return false; }
  bool SetVolume(const std::string&, int, int) override { return false; }
};

class OneSocket final : public Sockets {
 public:
  std::unique_ptr<SocketControl> MakeSocket() override {
    auto socket = std::make_unique<FedSocket>();
    made = socket.get();
    return socket;
  }
  std::unique_ptr<SocketListener> MakeListener() override { return nullptr; }
  std::string LocalAddress() const override { return "127.0.0.1"; }
  FedSocket* made = nullptr;
};

/// Answers the opening exchange in its first turn.
class OpeningLoop final : public EventLoop {
 public:
  explicit OpeningLoop(OneSocket& sockets) : sockets_(sockets) {}
  void Yield(std::chrono::milliseconds) override { sockets_.made->Feed("^^1001\xFF"); }
  void Post(std::function<void()> call) override { posted_.push_back(std::move(call)); }
  std::unique_ptr<Timer> MakeTimer(std::function<void()>) override { return nullptr; }
  void DropPosted() { posted_.clear(); }

 private:
  OneSocket& sockets_;
  std::vector<std::function<void()>> posted_;
};

class StoppingControl final : public RunControl {
 public:
  void StartChart(const std::string&) override {}
  void StopChart() override {
    window->run.phase = RunPhase::Idle;
    client->Close();
  }
  void MaxedOut(MaxedOutMode) override {}
  void ProcessCmd(std::string_view text) override { Require(text.size() <= 4096); }

  static void Require(bool holds) {
    if (!holds) std::abort();
  }

  ChartWindow* window = nullptr;
  UdsClient* client = nullptr;
};

void RunLink(bool push, std::string_view input) {
  // Made once: nothing of them is changed by a message, and a session costs more than all messages of an input.
  static NoClock clock;
  static NoFiles files;
  static NoProcesses processes;
  static NoDialogs dialogs;
  static NoSound inputs;
  static NoMixer mixer;
  static OneSocket sockets;
  static OpeningLoop loop(sockets);
  static Session session(Host{clock, loop, sockets, files, processes, dialogs, inputs, mixer}, "home");
  loop.DropPosted();
  session.settings.channels.Dsrc = {20, 21, 22, 23, 24, 25, 26, 27};
  session.settings.uds.UDSpush = push;
  ChartWindow window;
  window.run.plan = PlanOfRun(session.settings);
  StoppingControl control;
  SoundInput sound(session, window);
  UdsClient client(session, window, control, sound, [&](std::optional<TimeStamp> time) {
    StoppingControl::Require(!time || (*time > 0 && *time < 2958466));
    if (window.chart.Count() < 10) window.chart.AddTime(time.value_or(0));
  });
  control.window = &window;
  control.client = &client;
  StoppingControl::Require(client.UDSConnect());
  window.run.phase = RunPhase::Running;

  while (!input.empty() && client.IsReady()) {
    const std::size_t end = std::min(input.find('\xFE'), input.size() - 1);
    sockets.made->Feed(input.substr(0, end + 1));
    input.remove_prefix(end + 1);
  }
  StoppingControl::Require(window.run.ChannelCount >= 1 && window.run.ChannelCount <= kChannels);
  StoppingControl::Require(window.chart.ChannelCount() >= 1 && window.chart.ChannelCount() <= kChannels);
  StoppingControl::Require(std::isfinite(window.run.log.ChartEndTime) && std::isfinite(window.chart.XAxisMax));
}

}  // namespace
}  // namespace tarvolt

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
  tarvolt::RunLink((data[0] & 1) != 0, input);
  return 0;
}
