// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/image_saver.h"

#include <algorithm>

#include "config/home_path.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr double kMinutesPerDay = 1440;
constexpr std::int32_t kViewAlone = 0;
constexpr std::int32_t kFullViewAlone = 1;

}  // namespace

ImageSaver::ImageSaver(Session& session, ChartWindow& window, Person& person)
    : session_(session), window_(window), person_(person) {}

double ImageSaver::Period() const {
  return std::max(session_.settings.images.SaveFTPImagePeriod, 1) / kMinutesPerDay;
}

// A restart of the program does not put the next picture off: its time is stored.
void ImageSaver::RunStarted() {
  startedByRun_ = session_.settings.images.AutoStartFTP;
  if (!IsOn()) return;
  if (!person_.HasScreen()) session_.Add2SLog("Images of the chart are not saved: this program cannot draw them.");
  const TimeStamp now = NowPrecise(session_.host.clock);
  const TimeStamp stored = Val(session_.store.GetSetting(Section::Settings, "NextFTPSave"));
  PlanNext(stored > now && stored <= now + Period() ? stored : now + Period());
}

void ImageSaver::PlanNext(TimeStamp next) {
  next_ = next;
  session_.store.SaveSetting(Section::Settings, "NextFTPSave", NumberText(next));
}

void ImageSaver::mnuSaveFTPImage() {
  session_.settings.images.SaveFTPImage = !IsOn();
  startedByRun_ = false;
  session_.store.SaveSetting(Section::Settings, "SaveFTPImage",
                             session_.settings.images.SaveFTPImage ? "True" : "False");
  if (session_.settings.images.SaveFTPImage) PlanNext(NowPrecise(session_.host.clock) + Period());
}

// A clock that was set back must not hold the pictures up for as long.
void ImageSaver::SaveWhenDue() {
  if (!IsOn() || !person_.HasScreen() || !window_.run.ChartRunning()) return;
  const TimeStamp now = NowPrecise(session_.host.clock);
  next_ = std::min(next_, now + Period());
  if (now < next_) return;
  PlanNext(now + Period());
  Save();
}

void ImageSaver::Save() {
  if (!person_.HasScreen() || window_.chart.Count() == 0) return;
  const std::int32_t which = session_.settings.images.SaveFTPFullView;
  if (which != kFullViewAlone) SaveOne("FTPImageFile", "NewImage", false);
  if (which != kViewAlone) SaveOne("FTPImageFileFV", "NewFVImage", true);
}

// The mark of a new image is for whoever sends it on. A failure is reported once, until a picture is written again.
void ImageSaver::SaveOne(const char* fileKey, const char* newKey, bool fullView) {
  const std::filesystem::path file = FileOf(fileKey);
  std::string problem;
  if (person_.DrawChart(file, fullView, problem)) {
    failing_ = false;
    session_.store.SaveSetting(Section::Settings, newKey, "True");
    NoteSaved(file.string());
    return;
  }
  if (!failing_) session_.Add2SLog("Could not save the image " + file.string() + ": " + problem);
  failing_ = true;
}

// No program here writes metafiles, so a name that ends in .emf stands for a picture beside it.
std::filesystem::path ImageSaver::FileOf(const char* key) const {
  const std::string stored = session_.store.GetSetting(Section::Settings, key);
  std::filesystem::path file = PathFromStored(stored, session_.home.string());
  if (file.extension() == ".emf" || file.extension().empty()) file.replace_extension(".png");
  return file;
}

}  // namespace tarvolt
