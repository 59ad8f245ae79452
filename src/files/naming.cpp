// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/naming.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include "files/backup_source.h"
#include "files/recovery_folder.h"
#include "text/ansi.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

// Slots of CreatedFolders.
constexpr std::size_t kBaseSlot = 0;
constexpr std::size_t kMonthSlot = 1;
constexpr std::size_t kDaySlot = 3;

struct NameDate {
  TimeStamp stamp = 0;
  bool lmst = false;
  bool ut = false;
};

// Before the first run the sidereal clock has no start to count from: such a name has the solar time.
NameDate DateOfNow(const Session& session, const RunState& run) {
  const bool lmst = run.time.logLMST && run.time.firstStamp > 0;
  const TimeStamp now =
      lmst ? CalcTime(session.host.clock, run.time) : CalcTimeNotSidereal(session.host.clock, run.time);
  return {now, lmst, run.ChartRunning() ? run.log.LogUsingUT : session.settings.place.LogUsingUT};
}

TimeStamp StampOfData(const ChartWindow& window, double offsetDays) {
  const RunState& run = window.run;
  if (window.save.ViewSaveActive) {
    const TimeStamp stamp = window.chart.GetTime(window.save.FirstViewIndex);
    const TimeStamp start = run.time.firstStamp;
    return run.TimeRefZeroFile ? stamp + (start - WholeDay(start)) : stamp;
  }
  const bool zeroBased = run.TimeRefZeroFile && !window.save.keeping.LoadedFromFile;
  if (zeroBased || window.save.keeping.BackupAlone()) return StartOfRun(run) + offsetDays;
  return window.chart.Count() > 0 ? window.chart.GetTime(0) : StartOfRun(run);
}

// Nothing when the chart holds no usable data.
std::optional<NameDate> DateOfData(Session& session, ChartWindow& window, double offsetDays) {
  if (LastIndexOfRun(session, window) < 2) return std::nullopt;
  if (window.save.ViewSaveActive) window.save.FirstViewIndex = FindXaxisMinIndex(window.chart);
  return NameDate{StampOfData(window, offsetDays), window.run.ChartIsLMST, window.run.ChartIsUT};
}

std::string Ending(NameKind kind) {
  switch (kind) {
    case NameKind::Wav:
      return ".wav";
    case NameKind::Log:
      return "SessionLog.txt";
    case NameKind::Data:
      return ".tvd";
  }
  return {};
}

// True when the folder was not there and has been made.
bool MakeFolder(Session& session, const std::filesystem::path& folder) {
  if (session.host.files.FolderExists(folder)) return false;
  std::error_code error;
  session.host.files.MakeFolders(folder, error);
  if (!error) return true;
  session.Add2SLog(" Could Not Make Folder " + folder.string() + ": " + error.message());
  return false;
}

std::string FolderName(std::string_view localName) {
  const std::string clean = NameDir(localName);
  return clean.empty() ? "Unknown" : clean;
}

// The name cleaned for use as a folder; a saved header shows it in that form.
std::string CleanLocalName(DataFileHeader& header) {
  const std::string clean = FolderName(header.localName);
  header.localName = PadTo(clean, 20);
  return clean;
}

std::filesystem::path MonthFolder(const std::filesystem::path& localFolder, TimeStamp date) {
  return localFolder / FormatDate(date, "yymm");
}

std::filesystem::path DayFolder(const std::filesystem::path& folder, TimeStamp date) {
  return folder / FormatDate(date, "yymmdd");
}

std::filesystem::path MakeFoldersFor(Session& session, ChartWindow& window, TimeStamp date) {
  auto& created = window.save.CreatedFolders;
  const std::filesystem::path base = session.DataFolder();
  const std::filesystem::path localFolder = base / CleanLocalName(window.header);
  // Made also when no option asks for it; what is noted is the base folder, which a cancelled save never removes
  // (meant).
  if (MakeFolder(session, localFolder)) created[kBaseSlot] = base;

  std::filesystem::path folder = base;
  if (session.settings.files.OrganizeByMonth) {
    folder = MonthFolder(localFolder, date);
    if (MakeFolder(session, folder)) created[kMonthSlot] = folder;
  }
  if (session.settings.files.OrganizeByDay) {
    folder = DayFolder(folder, date);
    if (MakeFolder(session, folder)) created[kDaySlot] = folder;
  }
  return folder;
}

}  // namespace

std::string NameDir(std::string_view text) {
  constexpr std::string_view kAllowed = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
  std::string name(text);
  for (char& c : name) {
    if (kAllowed.find(c) == std::string_view::npos) c = '_';
  }
  if (name.size() <= 2) return name;
  while (name.size() > 1 && name.back() == '_') name.pop_back();
  return name;
}

std::filesystem::path NameDataFile(Session& session, ChartWindow& window, NameKind kind, bool withPath,
                                   double offsetDays) {
  NameDate date;
  if (kind == NameKind::Data) {
    const std::optional<NameDate> found = DateOfData(session, window, offsetDays);
    if (!found) return kBadFile;
    date = *found;
    window.save.CreatedFolders.fill({});
  } else {
    date = DateOfNow(session, window.run);
    date.stamp += offsetDays;
  }
  const std::string name = FileNameFromDate(date.stamp) + Ending(kind);
  if (!withPath) return name;
  const std::string prefix = date.lmst ? "ST" : date.ut ? "UT" : "";
  return MakeFoldersFor(session, window, date.stamp) / (prefix + name);
}

std::filesystem::path FolderOfDate(const Session& session, TimeStamp date) {
  const Settings& settings = session.settings;
  std::filesystem::path folder = session.DataFolder();
  if (settings.files.OrganizeByMonth)
    folder = MonthFolder(folder / FolderName(PadTo(settings.station.LocalName, 20)), date);
  return settings.files.OrganizeByDay ? DayFolder(folder, date) : folder;
}

std::filesystem::path NameOfOwn(Session& session, const ChartWindow& window, const std::filesystem::path& name) {
  const bool isOwn = name == window.save.SavedAs && !window.save.ViewSaveActive;
  return isOwn ? name : FreeName(session.host.files, name);
}

}  // namespace tarvolt
