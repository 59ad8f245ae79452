// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/save_plan.h"

#include "files/backup_source.h"
#include "files/format/widen_samples.h"
#include "files/header_info.h"

namespace tarvolt {
namespace {

enum class NumberForm { Doubles, Integers, Cancelled };

bool FitsIntegers(const StripChart& chart) {
  return chart.DataMax() <= kIntegerLimit && chart.DataMin() >= -kIntegerLimit;
}

NumberForm ChooseNumberForm(Session& session, const ChartWindow& window, bool wantsIntegers, bool mayAsk) {
  if (!wantsIntegers) return NumberForm::Doubles;
  if (FitsIntegers(window.chart)) return NumberForm::Integers;
  if (!mayAsk || !session.settings.program.ShowMsgBox) {
    session.Add2SLog(" Values exceed the limits of Integer Saves: saved in non-Integer format.");
    return NumberForm::Doubles;
  }
  const Question question{"Integer Save Not Possible.",
                          "This data has values that exceed the limits of Integer Saves.\n"
                          "File must be saved in non-Integer format. \n\n"
                          "Cancel - Aborts this Save.\n"
                          "OK - Continues the Save in Non-Integer Format.",
                          Buttons::OkCancel, Answer::Ok};
  return session.host.dialogs.Ask(question) == Answer::Cancel ? NumberForm::Cancelled : NumberForm::Doubles;
}

// A backup that lacks samples of the store is of no use. One that has more is right only where the store keeps just the
// end of the run; elsewhere it is another run's.
bool BackupIsWhole(const ChartWindow& window, std::int64_t count) {
  return window.save.keeping.Mini ? count >= window.chart.Count() : count == window.chart.Count();
}

std::optional<StoredSamples> SamplesInBackup(Session& session, const ChartWindow& window) {
  const LogKeeping& keeping = window.save.keeping;
  if (window.save.ViewSaveActive) return std::nullopt;
  // A backup of integers has held such values inside their limits.
  if (keeping.Form.integers && !FitsIntegers(window.chart)) return std::nullopt;
  if (!window.run.DataNeedsSave && !keeping.BackupAlone()) return std::nullopt;
  const std::optional<BackupContents> backup = FindBackup(session, window);
  if (!backup || !BackupIsWhole(window, backup->count)) return std::nullopt;
  return backup->samples;
}

void SetHeaderTimes(const ChartWindow& window, bool timesOfRun, DataFileHeader& header) {
  const SaveState& save = window.save;
  if (timesOfRun) {
    header.start = StartOfRun(window.run);
    header.end = window.run.EndStamp;
    return;
  }
  if (window.chart.Count() == 0) return;
  header.start = window.chart.GetTime(save.FirstViewIndex);
  // One sample short: meant, the readers' step for files without stamps counts on it.
  header.end = window.chart.GetTime(save.LastSaveIndex > 0 ? save.LastSaveIndex - 1 : 0);
}

void SetHeader(ChartWindow& window, bool timesOfRun, DataFilePlan& file) {
  SetHeaderTimes(window, timesOfRun, window.header);
  window.header.channels = static_cast<std::int16_t>(file.layout.channels);
  window.header.notesLength = static_cast<std::int32_t>(file.notesBlock.size());
  file.header = window.header;
}

}  // namespace

bool ChooseSaveRange(ChartWindow& window) {
  SaveState& save = window.save;
  const std::int32_t last = window.LastSampleIndex();
  save.LastSaveIndex = last;
  if (!save.ViewSaveActive) {
    save.FirstViewIndex = 0;
    return true;
  }
  const StripChart& chart = window.chart;
  save.LastSaveIndex =
      chart.Samples().TimesRise() ? FindXaxisMinIndex(chart, chart.XAxisMax) : FindXaxisMaxIndex(chart);
  return save.LastSaveIndex > save.FirstViewIndex;
}

std::optional<SavePlan> PlanSave(Session& session, ChartWindow& window, bool mayAsk) {
  SavePlan plan;
  DataFilePlan& file = plan.file;
  file.stored = SamplesInBackup(session, window);
  file.layout = LayoutOfChart(session.settings, window);
  const NumberForm form = ChooseNumberForm(session, window, file.layout.integers, mayAsk);
  if (form == NumberForm::Cancelled) return std::nullopt;
  // The block describes integers also when the values are too large and doubles are written (meant).
  file.notesBlock = GetModifiedNotes(window, window.notes + window.save.PendingNotes, file.layout);
  file.layout.integers = form == NumberForm::Integers;
  plan.storeHoldsRun = !window.save.keeping.BackupAlone();
  file.first = window.save.FirstViewIndex;
  file.last = window.save.LastSaveIndex;

  GetWriterInfo(session, window.chart, window.header);
  SetHeader(window, file.stored && !plan.storeHoldsRun, file);
  return plan;
}

DataFilePlan PlanOfChart(ChartWindow& window, const SampleLayout& layout, std::string_view version) {
  DataFilePlan file;
  ChooseSaveRange(window);
  file.layout = layout;
  file.notesBlock = GetModifiedNotes(window, window.notes, layout);
  file.first = window.save.FirstViewIndex;
  file.last = window.save.LastSaveIndex;
  GetWriterInfo(version, window.chart, window.header);
  SetHeader(window, false, file);
  return file;
}

std::error_code WriteSave(FileSystem& files, SavePlan& plan, const SampleColumns& samples,
                          const std::filesystem::path& name) {
  const std::error_code error = WriteDataFile(files, plan.file, samples, name);
  if (!error || !plan.file.stored || !plan.storeHoldsRun) return error;
  plan.file.stored.reset();
  return WriteDataFile(files, plan.file, samples, name);
}

}  // namespace tarvolt
