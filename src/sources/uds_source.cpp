// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/uds_source.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "sources/source_table.h"
#include "text/number.h"

namespace tarvolt {

UdsSource::UdsSource(Session& session, ChartWindow& window, RunControl& control, SoundInput& sound,
                     UdsClient::SetEnded onSet)
    : session_(session),
      run_(window.run),
      control_(control),
      client_(session, window, control, sound, std::move(onSet)) {}

bool UdsSource::Connect() {
  const UdsSettings& uds = run_.plan.uds;
  session_.Add2SLog("Using UDS: " + uds.UDSexe);
  session_.Add2SLog(std::string("UDS Data: ") + (uds.UDSpush ? "Pushed" : "Polled"));
  set_ = {};
  taken_ = false;
  if (!client_.UDSConnect()) {
    session_.LogAndTell("Tarvolt", "UDS Connection Canceled - Chart Canceled");
    return false;
  }
  FollowDeclaredCount();
  return true;
}

void UdsSource::FollowDeclaredCount() {
  auto& rows = run_.plan.Dsrc;
  const int inTable = run_.plan.ActiveChannels();
  std::fill(rows.begin() + run_.ChannelCount, rows.end(), DataSourceId{0});
  if (run_.ChannelCount < inTable) {
    session_.Add2SLog("UDS declares fewer channels than the channel table has rows. Recorded: " +
                      NumberText(std::int64_t{run_.ChannelCount}) + " of " + NumberText(std::int64_t{inTable}) + ".");
  }
  if (run_.ChannelCount <= inTable) return;
  std::string further;
  DataSourceId input = kFirstUds;
  for (int channel = inTable; channel < run_.ChannelCount; ++channel) {
    while (std::find(rows.begin(), rows.begin() + channel, input) != rows.begin() + channel) ++input;
    rows[channel] = input;
    further += (further.empty() ? "" : ", ") + SourceName(input);
  }
  session_.Add2SLog("UDS declares more channels than the channel table has rows. Recorded as well: " + further + ".");
}

bool UdsSource::Read(int channel, TickReadings& readings) {
  if (!taken_ && !TakeSet()) return false;
  readings.AddSum(channel, set_[static_cast<std::size_t>(run_.plan.Dsrc[channel] - kFirstUds)]);
  return true;
}

bool UdsSource::TakeSet() {
  if (!run_.plan.uds.UDSpush && !Poll()) return false;
  set_ = client_.TakeSet();
  taken_ = true;
  return true;
}

// Where buffers of sound are the clock none may begin another tick meanwhile; else they go on gathering for the rows
// behind. What came of a set that was given up on is kept for the poll that gets the rest.
bool UdsSource::Poll() {
  if (run_.plan.pacer == Pacer::Sound) run_.TickBusy = true;
  const std::int64_t polled = run_.RunNumber;
  const UdsClient::PollResult result = client_.Poll();
  const bool goesOn = run_.ChartRunning() && run_.RunNumber == polled;
  if (result == UdsClient::PollResult::Answered && goesOn) return true;
  if (result == UdsClient::PollResult::LinkLost && goesOn) {
    session_.Tell("Tarvolt", "Connection Lost with UDS");
    session_.Add2SLog("Lost UDS Connection Stopping Chart.");
    control_.StopChart();
  }
  return false;
}

void UdsSource::DescribeLink(Metadata& metadata) const {
  metadata.AddToMetaData("Using UDS: ", run_.plan.uds.UDSexe);
  metadata.AddToMetaData("UDS Data: ", run_.plan.uds.UDSpush ? "Pushed" : "Polled");
}

}  // namespace tarvolt
