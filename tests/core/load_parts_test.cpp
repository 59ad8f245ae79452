// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/chart/command_states.h"
#include "core/chart/load_data.h"
#include "files/desk.h"
#include "files/raw_file.h"
#include "files/saving.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/station/Data/UT100102120000.tvd";
constexpr int kSamples = 10;

// Three channels of ten samples a day apart; the value tells channel and sample.
struct PartialLoads : testing::Test {
  PartialLoads() {
    desk.session.settings.program.ShowMsgBox = true;
    RawFile raw;
    raw.Front(40000, 40008, 3,
              Block("", {"CHL0Red", "CHL1Green", "CHL2Blue", "CHO01000", "CHO12000", "CHO23000",
                         NotationItem("0", "2", "on red"), NotationItem("2", "5", "on blue")}));
    for (int i = 0; i < kSamples; ++i) {
      raw.Add(40000.0 + i);
      for (int channel = 0; channel < 3; ++channel) raw.Add(Value(channel, i));
    }
    desk.host.disk.Put(kFile, raw.Bytes());
  }

  static double Value(int channel, int sample) { return 100 * channel + sample; }
  LoadOutcome Load(LoadRange range = {}) { return LoadData(desk.session, desk.window, kFile, range, request); }
  const StripChart& Chart() const { return desk.window.chart; }
  const std::string& Status() const { return desk.window.view.Status.Text(); }

  /// Somebody who ticks these channels, counted from 0, whenever asked.
  void Tick(std::vector<int> channels, bool localOffsets = false) {
    desk.window.loadOptions.LoadSelectedChannels = true;
    request.askChannels = [this, channels, localOffsets](const ChannelQuestion& question) {
      asked = question;
      ChannelAnswer answer;
      for (const int channel : channels) answer.ticked[channel] = true;
      answer.localOffsets = localOffsets;
      return std::optional(answer);
    };
  }

  Desk desk;
  LoadRequest request;
  ChannelQuestion asked;
};

TEST_F(PartialLoads, RangesAreHeldToTheFile) {
  struct Row {
    LoadRange wanted;
    LoadRange held;
    bool partial;
  };
  for (const Row& row :
       {Row{{0, 0}, {0, 9}, false}, Row{{3, 5}, {3, 5}, true}, Row{{4, 0}, {4, 9}, true}, Row{{0, 99}, {0, 9}, true},
        Row{{7, 3}, {0, 3}, true}, Row{{-5, -1}, {0, 9}, false}, Row{{2147483647, 0}, {0, 9}, true}}) {
    LoadRange range = row.wanted;
    ASSERT_EQ(LoadData(desk.session, desk.window, kFile, range), LoadOutcome::Loaded);
    EXPECT_EQ(range.firstIndex, row.held.firstIndex);
    EXPECT_EQ(range.lastIndex, row.held.lastIndex);
    ASSERT_EQ(Chart().Count(), row.held.lastIndex - row.held.firstIndex + 1);
    EXPECT_EQ(Chart().GetTime(0), 40000 + row.held.firstIndex);
    EXPECT_EQ(Chart().GetValue(2, 0), Value(2, row.held.firstIndex));
    EXPECT_EQ(Status().ends_with(" (Partial Load)"), row.partial);
    EXPECT_EQ(desk.window.header.end, 40000 + row.held.lastIndex - (row.partial ? 0 : 1));
  }
}

TEST_F(PartialLoads, NotationsStayOnTheirSamplesAndChannels) {
  ASSERT_EQ(Load({4, 6}), LoadOutcome::Loaded);
  ASSERT_EQ(desk.window.notations.count, 1) << "the other lies outside";
  EXPECT_EQ(desk.window.notations.slots[0].text, "on blue");
  EXPECT_EQ(desk.window.notations.slots[0].index, 1);
  EXPECT_EQ(desk.window.notations.slots[0].stamp, 40005);

  Tick({1, 2});
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  ASSERT_EQ(desk.window.notations.count, 1) << "the other's channel is not loaded";
  EXPECT_EQ(desk.window.notations.slots[0].channel, 1);
  EXPECT_EQ(desk.window.notations.slots[0].index, 5);
}

TEST_F(PartialLoads, SelectedChannelsFollowOneAnother) {
  Tick({0, 2});
  desk.window.loadOptions.LoadFileOffsets = true;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(asked.channels, 3);
  EXPECT_EQ(asked.labels[2], "Blue");
  EXPECT_EQ(asked.ticked, (std::array<bool, 8>{true, true, true}));
  EXPECT_EQ(Chart().ChannelCount(), 2);
  EXPECT_EQ(desk.window.run.ChannelCount, 2);
  EXPECT_EQ(desk.window.header.channels, 2);
  EXPECT_EQ(Chart().ChannelName[1], "Blue");
  EXPECT_EQ(Chart().ChannelName[2], "");
  EXPECT_EQ(Chart().ChannelPen[1], 2) << "keeps its colour";
  EXPECT_EQ(Chart().GetValue(1, 4), Value(2, 4) + 3000) << "its own offset";
  EXPECT_EQ(desk.window.run.ChannelOffset[1], 3000);
  EXPECT_EQ(desk.window.loadOptions.ChannelSelected, (std::array<bool, 8>{true, false, true}));

  ASSERT_EQ(SaveDataFile(desk.session, desk.window, "/station/two.tvd", false), SaveOutcome::Saved);
  desk.window.loadOptions = LoadOptions();
  ASSERT_EQ(LoadData(desk.session, desk.window, "/station/two.tvd"), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().ChannelPen[1], 1) << "a load of all channels has its own pens again";
  EXPECT_EQ(Chart().GetValue(1, 4), Value(2, 4) + 3000);
}

TEST_F(PartialLoads, AnEmptySelectionEndsTheLoadAndLeavesTheChart) {
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  const std::string title = desk.window.view.Title;
  const std::string status = Status();
  Tick({});
  EXPECT_EQ(Load(), LoadOutcome::Refused);
  Tick({5});
  EXPECT_EQ(Load(), LoadOutcome::Refused) << "the file has no such channel";
  request.askChannels = [](const ChannelQuestion&) { return std::nullopt; };
  EXPECT_EQ(Load(), LoadOutcome::Refused) << "cancelled";
  EXPECT_EQ(Chart().Count(), kSamples);
  EXPECT_EQ(desk.window.channelLabels[1], "Green");
  EXPECT_EQ(desk.window.view.Title, title);
  EXPECT_EQ(Status(), status);
  EXPECT_TRUE(StatesOf(desk.window).SaveView);
  EXPECT_FALSE(desk.window.save.Loading);
}

TEST_F(PartialLoads, NobodyIsAskedAboutAKeptSelectionNorWhereNobodyIs) {
  desk.window.loadOptions.LoadSelectedChannels = true;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().ChannelCount(), 3);
  Tick({0});
  desk.window.loadOptions.ChannelSelected = {false, true};
  request.keepSelection = true;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().ChannelCount(), 1);
  EXPECT_EQ(Chart().GetValue(0, 1), Value(1, 1));
}

TEST_F(PartialLoads, OffsetsOfStationAndFileAddUp) {
  desk.session.settings.channels.DefaultChannelOffset = {0.25, 0.5, 0.75};
  LoadOptions& options = desk.window.loadOptions;
  options.LoadLocalOffsets = true;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().GetValue(1, 3), Value(1, 3) + 0.5);
  options.LoadFileOffsets = true;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().GetValue(1, 3), Value(1, 3) + 0.5 + 2000);
  options = LoadOptions();
  Tick({2}, true);
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().GetValue(0, 3), Value(2, 3) + 0.75) << "asked for beside the channels";
}

TEST_F(PartialLoads, ExtraChannelsAreEmptyAndAsManyAsAChartHolds) {
  request.extraChannels = 2;
  Tick({1});
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().ChannelCount(), 3);
  EXPECT_EQ(desk.window.header.channels, 3);
  EXPECT_EQ(Chart().GetValue(0, 7), Value(1, 7));
  EXPECT_EQ(Chart().GetValue(2, 7), 0);
  request.extraChannels = 50;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().ChannelCount(), StripChart::kMaxChannels);
}

TEST_F(PartialLoads, ForcedValuesTakeThePlaceOfTheFiles) {
  RawFile raw;
  raw.Front(1, 2, 1, "the tokens were lost");
  for (std::int16_t i = 0; i < 6; ++i) raw.Add(i).Add(static_cast<std::int16_t>(-i));
  desk.host.disk.Put(kFile, raw.Bytes());
  request.forced = {2, 2, 2, 50000.0, 50004.0};
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  ASSERT_EQ(Chart().Count(), 6);
  EXPECT_EQ(Chart().ChannelCount(), 2);
  EXPECT_DOUBLE_EQ(Chart().GetTime(5), 50005);
  EXPECT_EQ(Chart().GetValue(1, 5), -5);
  EXPECT_TRUE(
      desk.host.dialogs.HasShown("Any changes made to this data file using \nthe Salvage function will be saved "
                                 "only if you\nsave this file."));
  request.forced = {1000, 2, 2, {}, {}};
  ASSERT_EQ(Load(), LoadOutcome::Refused) << "twelve values are one sample of nine channels";
  EXPECT_EQ(Chart().Count(), 6) << "the chart on display stays";
}

// Looks at the window at each yield of a load, as a refreshing form does.
struct Onlooker {
  void LookAtEachYield() {
    titles.push_back(desk.window.view.Title);
    if (desk.window.chart.RepaintRequests != drawn) ++redraws;
    drawn = desk.window.chart.RepaintRequests;
    if (desk.window.save.Loading) desk.host.loop.Post([this] { LookAtEachYield(); });
  }

  Desk& desk;
  std::vector<std::string> titles;
  std::uint64_t drawn = 0;
  int redraws = 0;
};

std::string FileOf(int samples) {
  RawFile raw;
  raw.Front(1, 2, 1, "");
  for (int i = 0; i < samples; ++i) raw.Add(40000.0 + i).Add(i * 0.5);
  return raw.Bytes();
}

TEST_F(PartialLoads, ProgressStandsInTheTitleAndTheChartIsDrawn) {
  desk.host.disk.Put(kFile, FileOf(12000));
  Onlooker onlooker{desk, {}};
  desk.host.loop.Post([&] { onlooker.LookAtEachYield(); });
  ASSERT_EQ(Load({2000, 10999}), LoadOutcome::Loaded);
  const std::string name = kFile;
  ASSERT_EQ(onlooker.titles.size(), 3u) << "before the file is read, and after 5,000 and 10,000 samples";
  EXPECT_EQ(onlooker.titles[1], "3000 of 9000 Samples Loaded " + name);
  EXPECT_EQ(onlooker.titles[2], "8000 of 9000 Samples Loaded " + name);
  EXPECT_EQ(onlooker.redraws, 3);
}

/// A disk with a place that cannot be read.
class DamagedDisk final : public FileSystem {
 public:
  DamagedDisk(SimDisk& below, std::uint64_t from, std::uint64_t to) : below_(below), from_(from), to_(to) {}

  std::unique_ptr<File> Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) override {
    return std::make_unique<DamagedFile>(below_.Open(path, mode, error), from_, to_);
  }
  bool FileExists(const std::filesystem::path& path) override { return below_.FileExists(path); }
  bool FolderExists(const std::filesystem::path& path) override { return below_.FolderExists(path); }
  void MakeFolders(const std::filesystem::path&, std::error_code&) override {}
  void Rename(const std::filesystem::path&, const std::filesystem::path&, std::error_code&) override {}
  void Remove(const std::filesystem::path&, std::error_code&) override {}
  std::vector<std::filesystem::path> ListFiles(const std::filesystem::path&, std::error_code&) override { return {}; }

 private:
  class DamagedFile final : public File {
   public:
    DamagedFile(std::unique_ptr<File> below, std::uint64_t from, std::uint64_t to)
        : below_(std::move(below)), from_(from), to_(to) {}
    std::size_t Read(void* to, std::size_t size, std::error_code& error) override {
      const bool damaged = position_ < to_ && position_ + size > from_;
      if (damaged) size = position_ < from_ ? from_ - position_ : 0;
      const std::size_t read = below_->Read(to, size, error);
      position_ += read;
      if (damaged && read == 0) error = std::make_error_code(std::errc::io_error);
      return read;
    }
    void Write(std::string_view, std::error_code&) override {}
    void Seek(std::uint64_t position, std::error_code& error) override {
      below_->Seek(position, error);
      position_ = position;
    }
    std::uint64_t Size(std::error_code& error) override { return below_->Size(error); }
    void Truncate(std::uint64_t, std::error_code&) override {}
    void Sync(std::error_code&) override {}

   private:
    std::unique_ptr<File> below_;
    std::uint64_t from_;
    std::uint64_t to_;
    std::uint64_t position_ = 0;
  };

  SimDisk& below_;
  std::uint64_t from_;
  std::uint64_t to_;
};

TEST_F(PartialLoads, ADamagedPlaceCostsOnlyWhatIsInIt) {
  constexpr int kLong = 200000;
  const auto offsetOf = [](int sample) { return std::uint64_t{156} + 16 * std::uint64_t(sample); };
  desk.host.disk.Put(kFile, FileOf(kLong));
  DamagedDisk disk(desk.host.disk, offsetOf(90000), offsetOf(90010));
  StripChart chart;
  const auto samplesOf = [&](LoadRange range, bool& whole) {
    LoadRequest part;
    part.range = range;
    ChartLoad load(disk, part);
    EXPECT_TRUE(load.Open(kFile) && load.ChooseChannels());
    chart.ClearData();
    whole = load.ReadSamples(chart);
    return chart.Count();
  };
  bool whole = false;
  EXPECT_EQ(samplesOf({1000, 89999}, whole), 89000);
  EXPECT_TRUE(whole) << "the damage lies behind";
  EXPECT_EQ(samplesOf({100000, kLong - 1}, whole), kLong - 100000);
  EXPECT_TRUE(whole) << "the damage lies before";
  EXPECT_EQ(chart.GetValue(0, 0), 50000);
  EXPECT_EQ(samplesOf({0, kLong - 1}, whole), 90000);
  EXPECT_FALSE(whole);
}

TEST_F(PartialLoads, TheTitleOfTheChartIsMadeByItsFormat) {
  desk.session.settings.chart.AutoTitle = true;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().Title, "Home Station  2009/07/06 00:00:00");
  desk.session.settings.chart.AutoTitleFormat = "%observer: %name %% %dates (%base) %unknown %";
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().Title, "A. Observer: Home Station %% 2009/07/06s (Local) %unknown %");
  desk.session.settings.chart.AutoTitle = false;
  ASSERT_EQ(Load(), LoadOutcome::Loaded);
  EXPECT_EQ(Chart().Title, "");
}

}  // namespace
}  // namespace tarvolt
