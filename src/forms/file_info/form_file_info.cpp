// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/file_info/form_file_info.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "files/header_info.h"
#include "forms/qt_text.h"
#include "text/ansi.h"
#include "text/number.h"
#include "timebase/position.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

QTableWidget* Table(QTabWidget* tabs, const QString& title, const QStringList& columns) {
  auto* table = new QTableWidget(0, static_cast<int>(columns.size()), tabs);
  table->setObjectName(title);
  table->setHorizontalHeaderLabels(columns);
  table->horizontalHeader()->setStretchLastSection(true);
  table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table->verticalHeader()->hide();
  table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  tabs->addTab(table, title);
  return table;
}

void AddRow(QTableWidget* table, const std::vector<std::string>& texts) {
  const int row = table->rowCount();
  table->insertRow(row);
  for (std::size_t column = 0; column < texts.size(); ++column)
    table->setItem(row, static_cast<int>(column), new QTableWidgetItem(ToQString(Trim(texts[column]))));
}

std::string LatitudeText(double latitude) {
  return latitude <= kUnsetPosition ? "unknown" : FormatLatitude(latitude);
}

std::string TimeBaseText(const RunState& run) {
  const std::string text = run.ChartIsLMST ? "LMST" : run.ChartIsUT ? "UT" : "Local";
  return run.TimeRefZeroFile ? text + ", counted from the midnight of the start" : text;
}

/// Samples of the whole log: memory may hold only the last of them.
std::int64_t SamplesOf(const ChartWindow& window) {
  return window.save.keeping.BackupAlone() ? window.run.TotalSamples : window.chart.Count();
}

std::string WholeTime(TimeStamp stamp) {
  return FormatDate(stamp, "YYYY-MM-DD hh:nn:ss.zzz");
}

}  // namespace

FormFileInfo::FormFileInfo(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QStringLiteral("FormFileInfo"));
  setWindowTitle(QStringLiteral("Data File Information"));
  auto* tabs = new QTabWidget(this);
  header_ = Table(tabs, QStringLiteral("Header"), {QStringLiteral("Field"), QStringLiteral("Value")});
  notes_ = new QPlainTextEdit(tabs);
  notes_->setReadOnly(true);
  tabs->addTab(notes_, QStringLiteral("Notes"));
  metadata_ = Table(tabs, QStringLiteral("Metadata"), {QStringLiteral("Name"), QStringLiteral("Value")});
  notations_ = Table(tabs, QStringLiteral("Notations"),
                     {QStringLiteral("Time"), QStringLiteral("Channel"), QStringLiteral("Text")});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs);
  resize(560, 520);
}

void FormFileInfo::Fill(const Session& session, const ChartWindow& window) {
  for (QTableWidget* table : {header_, metadata_, notations_}) table->setRowCount(0);
  const DataFileHeader header = HeaderOnDisplay(session, window);
  AddRow(header_, {"Local Name", header.localName});
  AddRow(header_, {"Observer", header.author});
  AddRow(header_, {"Location", header.location});
  AddRow(header_, {"Latitude", LatitudeText(header.latitude)});
  AddRow(header_, {"Longitude", LongitudeForDisplay(header.longitude, session.settings.place.DisplayWest)});
  AddRow(header_, {"Time Zone", NumberText(std::int64_t{header.timeZone})});
  AddRow(header_, {"Source", header.source});
  const bool hasSamples = SamplesOf(window) > 0;
  AddRow(header_, {"Start", hasSamples ? WholeTime(header.start) : "none"});
  AddRow(header_, {"End", hasSamples ? WholeTime(header.end) : "none"});
  AddRow(header_, {"Time Base", TimeBaseText(window.run)});
  AddRow(header_, {"Samples", NumberText(SamplesOf(window))});
  AddRow(header_, {"Channels", NumberText(std::int64_t{window.chart.ChannelCount()})});
  for (int channel = 0; channel < std::min(window.chart.ChannelCount(), kChannels); ++channel)
    AddRow(header_, {"Channel " + NumberText(std::int64_t{channel + 1}), window.chart.ChannelName[channel]});
  AddRow(header_, {"Version", VersionText(header)});
  notes_->setPlainText(ToQString(window.notes + window.save.PendingNotes));
  for (const MetadataRecord& record : window.metadata.Records()) AddRow(metadata_, {record.name, record.value});
  for (int slot = 0; slot < std::min(window.notations.count, Notations::kSlots); ++slot) {
    const Notation& notation = window.notations.slots[slot];
    if (notation.text.empty() || notation.text == kDeletedNotation) continue;
    AddRow(notations_, {WholeTime(notation.stamp), NumberText(std::int64_t{notation.channel + 1}), notation.text});
  }
  for (QTableWidget* table : {header_, metadata_, notations_}) table->resizeColumnToContents(0);
}

void FormFileInfo::closeEvent(QCloseEvent* event) {
  if (closed_) closed_();
  QWidget::closeEvent(event);
}

}  // namespace tarvolt
