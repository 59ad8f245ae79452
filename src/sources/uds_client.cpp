// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/uds_client.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <utility>

#include "sources/uds_messages.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr double kConnectLimit = 30000;  // milliseconds, of each wait of the opening
constexpr double kLookInterval = 250;    // milliseconds between two looks for the program's window

constexpr std::size_t kShownMessage = 200;  // bytes kept of a message for a person to see

std::chrono::milliseconds AtLeastOneMillisecond(double milliseconds) {
  return std::chrono::milliseconds(std::max<std::int64_t>(1, std::llround(std::ceil(milliseconds))));
}

/// A port as it stands in the settings; 0 for what is none.
std::uint16_t PortOf(std::int32_t number) {
  return number > 0 && number <= 0xFFFF ? static_cast<std::uint16_t>(number) : std::uint16_t{0};
}

/// The name of the program that a command line starts, without its folder.
std::string ProgramName(std::string_view commandLine) {
  const bool quoted = commandLine.starts_with('"');
  if (quoted) commandLine.remove_prefix(1);
  const std::string_view program = commandLine.substr(0, commandLine.find(quoted ? '"' : ' '));
  return std::string(program.substr(program.find_last_of("/\\") + 1));
}

/// One connection, from Connect to its end. Those who work on it when it ends hold it until they are done.
struct Link {
  std::unique_ptr<SocketControl> socket;
  bool open = true;
  bool answerDue = false;  ///< a set was asked for and has not come yet
  std::string errorWords;
  std::string pending;    ///< whole messages still to be acted on
  std::size_t acted = 0;  ///< bytes of them that are done with
  bool overlongLogged = false;
};

}  // namespace

struct UdsClient::State {
  State(Session& sharedSession, ChartWindow& ownWindow, RunControl& runControl, SoundInput& sound, SetEnded onSet)
      : session(sharedSession),
        window(ownWindow),
        control(runControl),
        dispatch(sharedSession, ownWindow, runControl, sound, std::move(onSet),
                 [this](std::string_view message) { Send(message); }) {}

  enum class WaitEnd { Reached, Escaped, LinkLost, TimedOut };

  void StartSource();
  std::shared_ptr<Link> OpenLink();
  bool WaitForConnection(const std::shared_ptr<Link>& connecting);
  bool OpeningExchange(const std::shared_ptr<Link>& opening);
  bool FailConnect(const std::shared_ptr<Link>& failed, WaitEnd end);
  bool FailOpening(const std::shared_ptr<Link>& failed, WaitEnd end);
  void Disconnect(const std::shared_ptr<Link>& ending);

  template <typename Reached>
  WaitEnd WaitFor(const Link& waiting, const Reached& reached);

  void TakeData(const std::shared_ptr<Link>& receiving);
  void ActOnPending(const std::shared_ptr<Link>& receiving);
  void LinkClosed(const std::shared_ptr<Link>& closed);

  void Send(std::string_view message) {
    if (link && link->open) link->socket->Write(UdsWord(message));
  }

  bool GivenUp() const { return window.run.AbortFlag || window.run.EndRequested; }
  void Show(std::string_view text) { window.view.Status.Say(std::string(text)); }
  void LogOverlong(Link& sending, std::size_t size) {
    if (sending.overlongLogged) return;
    sending.overlongLogged = true;
    session.Add2SLog("UDS sent a message of " + NumberText(static_cast<std::int64_t>(size)) +
                     " bytes, which is too long to be one. It was ignored.");
  }
  void ShowAndLog(std::string_view text) {
    Show(text);
    session.Add2SLog(text);
  }

  Session& session;
  ChartWindow& window;
  RunControl& control;
  UdsDispatch dispatch;
  std::shared_ptr<Link> link;
};

UdsClient::UdsClient(Session& session, ChartWindow& window, RunControl& control, SoundInput& sound, SetEnded onSet)
    : state_(std::make_unique<State>(session, window, control, sound, std::move(onSet))) {}

UdsClient::~UdsClient() {
  Close();
}

bool UdsClient::UDSConnect() {
  State& state = *state_;
  Close();
  state.StartSource();
  state.dispatch.BeginLink();
  const std::shared_ptr<Link> opening = state.OpenLink();
  return state.WaitForConnection(opening) && state.OpeningExchange(opening);
}

// Starts the source's program when it does not run yet, and waits for its window. Yields, without a time limit (meant).
void UdsClient::State::StartSource() {
  constexpr std::string_view kWindowTitle = "User Data Source";
  Processes& processes = session.host.processes;
  window.run.AbortFlag = false;
  if (!window.run.plan.uds.StartUDS) return;

  const std::string name = ProgramName(window.run.plan.uds.UDSexe);
  Show("Looking for UDS: " + name);
  if (processes.IsRunning(kWindowTitle)) return;
  session.Add2SLog("Trying to Start UDS: " + name);
  std::string why;
  if (!processes.StartMinimised(window.run.plan.uds.UDSexe, why)) {
    session.Add2SLog("UDS cannot be started: " + why);
    return;  // there is nothing to wait for; one that was started by hand may still answer
  }
  Show("Trying to Start: " + name + "  - Esc to quit trying.");
  Clock& clock = session.host.clock;
  while (!GivenUp() && !processes.IsRunning(kWindowTitle)) {
    const double nextLook = clock.MonotonicMilliseconds() + kLookInterval;
    for (double left = kLookInterval; left > 0 && !GivenUp(); left = nextLook - clock.MonotonicMilliseconds()) {
      session.host.loop.Yield(AtLeastOneMillisecond(left));
    }
  }
}

std::shared_ptr<Link> UdsClient::State::OpenLink() {
  const UdsSettings& uds = window.run.plan.uds;
  window.run.AbortFlag = false;
  Show("Attempting to Connect to UDS.... Escape Cancels");
  session.Add2SLog("Connecting to UDS on :" + uds.UDSip + ":" + NumberText(std::int64_t{uds.UDSport}));

  link = std::make_shared<Link>();
  link->socket = session.host.sockets.MakeSocket();
  // The events hold the link weakly: it owns the socket that owns them.
  const std::weak_ptr<Link> weak = link;
  link->socket->onDataArrival = [this, weak] {
    if (const auto strong = weak.lock()) TakeData(strong);
  };
  link->socket->onClose = [this, weak] {
    if (const auto strong = weak.lock()) LinkClosed(strong);
  };
  link->socket->onError = [weak](const std::string& words) {
    if (const auto strong = weak.lock()) strong->errorWords = words;
  };
  link->socket->Bind(uds.TVudsIP, PortOf(ValLong(uds.TVudsPort)));
  link->socket->Connect(uds.UDSip, PortOf(uds.UDSport));
  return link;
}

bool UdsClient::State::WaitForConnection(const std::shared_ptr<Link>& connecting) {
  const WaitEnd end = WaitFor(*connecting, [&] { return connecting->socket->IsConnected(); });
  return end == WaitEnd::Reached || FailConnect(connecting, end);
}

bool UdsClient::State::FailConnect(const std::shared_ptr<Link>& failed, WaitEnd end) {
  window.run.AbortFlag = false;
  Show("");
  if (end == WaitEnd::Escaped) session.Add2SLog("UDS Connection attempt manually aborted.");
  if (end == WaitEnd::TimedOut) ShowAndLog("Timed Out waiting for UDS connection.");
  if (end == WaitEnd::LinkLost) ShowAndLog("UDS Connection failed. " + failed->errorWords);
  Disconnect(failed);
  return false;
}

bool UdsClient::State::OpeningExchange(const std::shared_ptr<Link>& opening) {
  Show("Initializing UDS");
  opening->socket->Write(UdsWord("INIT"));
  Show("Sending Poll/Push option to UDS");
  opening->socket->Write(UdsWord(window.run.plan.uds.UDSpush ? "PUSH" : "POLL"));
  Show("Querying UDS for Channels");
  Show("Waiting for UDS Status");
  opening->socket->Write(UdsWord("STAT"));

  const WaitEnd end = WaitFor(*opening, [this] { return dispatch.UDSStatusReceived || dispatch.fatalStreamError; });
  if (end != WaitEnd::Reached || dispatch.fatalStreamError) return FailOpening(opening, end);
  Show("");
  return true;
}

bool UdsClient::State::FailOpening(const std::shared_ptr<Link>& failed, WaitEnd end) {
  window.run.AbortFlag = false;
  Show("");
  if (end == WaitEnd::LinkLost && !failed->errorWords.empty()) session.Add2SLog("UDS link: " + failed->errorWords);
  if (end == WaitEnd::TimedOut) {
    ShowAndLog("Timed Out waiting for UDS Initialization.");
  } else if (!dispatch.fatalStreamError) {
    ShowAndLog("Manually aborted waiting for UDS Initialization.");  // also for a dropped link (meant)
  }
  Disconnect(failed);
  return false;
}

// Yields until `reached` holds. What ends a wait early comes first: a source that answers and hangs up is lost.
template <typename Reached>
UdsClient::State::WaitEnd UdsClient::State::WaitFor(const Link& waiting, const Reached& reached) {
  Clock& clock = session.host.clock;
  const double limit = clock.MonotonicMilliseconds() + kConnectLimit;
  for (;;) {
    if (!waiting.open) return WaitEnd::LinkLost;
    if (GivenUp()) return WaitEnd::Escaped;
    if (reached()) return WaitEnd::Reached;
    const double left = limit - clock.MonotonicMilliseconds();
    if (left <= 0) return WaitEnd::TimedOut;
    session.host.loop.Yield(AtLeastOneMillisecond(left));
  }
}

UdsClient::PollResult UdsClient::Poll() {
  if (!IsReady()) return PollResult::LinkLost;
  State& state = *state_;
  const std::shared_ptr<Link> link = state.link;
  const RunState& run = state.window.run;
  state.window.run.AbortFlag = false;
  if (!link->answerDue) {
    state.dispatch.UDSDataDone = false;
    link->socket->Write(UdsWord("GETD"));
  }
  link->answerDue = true;
  do {
    state.session.host.loop.Yield();
    if (!link->open || !run.ChartRunning()) return PollResult::LinkLost;
  } while (!state.dispatch.UDSDataDone && !state.GivenUp());
  if (!state.dispatch.UDSDataDone) return PollResult::GivenUp;
  link->answerDue = false;
  return PollResult::Answered;
}

UdsSet UdsClient::TakeSet() {
  return state_->dispatch.TakeSet();
}

void UdsClient::Close() {
  if (state_->link) state_->Disconnect(state_->link);
}

void UdsClient::State::Disconnect(const std::shared_ptr<Link>& ending) {
  const std::shared_ptr<Link> held = ending;  // `ending` may be the member that is cleared here
  if (link == held) link = nullptr;
  held->open = false;
  held->socket->Disconnect();
  session.host.loop.Post([held] {});  // a socket must not die inside its own event
}

bool UdsClient::IsReady() const {
  return state_->link && state_->link->open && state_->link->socket->IsConnected() &&
         state_->dispatch.UDSStatusReceived;
}

// What is left of an earlier event goes first: a message may run a command that yields, and data may come meanwhile.
void UdsClient::State::TakeData(const std::shared_ptr<Link>& receiving) {
  const std::string received = receiving->socket->ReadAvailable();
  const std::string_view whole = WholeUdsMessages(received);
  receiving->pending.erase(0, std::exchange(receiving->acted, 0));
  if (receiving->pending.size() + whole.size() > 2 * SocketControl::kReadLimit) {
    session.Add2SLog("UDS sends faster than its messages can be acted on. Some were dropped.");
  } else {
    receiving->pending += whole;
  }
  ActOnPending(receiving);
}

// A message may end the link, and the run with it: then the rest of the messages is void.
void UdsClient::State::ActOnPending(const std::shared_ptr<Link>& receiving) {
  while (receiving->open && receiving->acted < receiving->pending.size()) {
    const std::size_t end = receiving->pending.find(kUdsEnd, receiving->acted);
    const std::string message = receiving->pending.substr(receiving->acted, end - receiving->acted);
    receiving->acted = end + 1;
    window.run.LastMessage.assign(message, 0, kShownMessage);
    if (message.size() > kUdsLongestMessage) LogOverlong(*receiving, message.size());
    dispatch.Act(message);
  }
}

void UdsClient::State::LinkClosed(const std::shared_ptr<Link>& closed) {
  closed->open = false;
  if (!window.run.ChartRunning()) return;
  if (!closed->errorWords.empty()) session.Add2SLog("UDS link: " + closed->errorWords);
  session.Tell("Tarvolt", "Connection Lost with UDS");
  session.Add2SLog("Lost UDS Connection Stopping Chart.");
  control.StopChart();
}

}  // namespace tarvolt
