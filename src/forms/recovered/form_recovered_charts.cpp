// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/recovered/form_recovered_charts.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPointer>
#include <QVBoxLayout>

#include "forms/qt_text.h"
#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

QString StartText(const RecoveredChart& chart) {
  if (!chart.readable) return QStringLiteral("cannot be read");
  const std::string base = std::string(chart.base).empty() ? "" : " " + std::string(chart.base);
  return ToQString(FormatDate(chart.start, "YYYY/MM/DD HH:nn:ss") + base);
}

QString LengthText(double days) {
  const std::int64_t seconds = RoundToInt32(days * 86400);
  const auto two = [](std::int64_t part) { return QStringLiteral("%1").arg(part, 2, 10, QLatin1Char('0')); };
  return two(seconds / 3600) + QLatin1Char(':') + two(seconds / 60 % 60) + QLatin1Char(':') + two(seconds % 60);
}

}  // namespace

FormRecoveredCharts::FormRecoveredCharts(RecoveredCharts& charts, QWidget* parent) : QDialog(parent), charts_(charts) {
  setObjectName(QStringLiteral("FormRecoveredCharts"));
  setWindowTitle(QStringLiteral("Recovered Charts"));
  setAttribute(Qt::WA_DeleteOnClose);
  words_ = new QLabel(this);
  words_->setObjectName(QStringLiteral("LblRecovered"));
  words_->setWordWrap(true);
  list_ = new QTreeWidget(this);
  list_->setObjectName(QStringLiteral("LstRecovered"));
  list_->setHeaderLabels({QStringLiteral("Start"), QStringLiteral("Length"), QStringLiteral("Channels"),
                          QStringLiteral("Samples"), QStringLiteral("File")});
  list_->setRootIsDecorated(false);
  list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  connect(list_, &QTreeWidget::itemSelectionChanged, this, [this] { Enable(); });
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  open_ = Button("cmdOpenRecovered", QStringLiteral("&Open"), &RecoveredCharts::Open);
  open_->setToolTip(QStringLiteral("Shows the chart in the main window; not while one is recorded"));
  keep_ = Button("cmdKeepRecovered", QStringLiteral("&Keep"), &RecoveredCharts::Keep);
  keep_->setToolTip(QStringLiteral("Moves the file among the other data files, under the name of its date"));
  delete_ = Button("cmdDeleteRecovered", QStringLiteral("&Delete..."), &RecoveredCharts::Delete);
  for (QPushButton* button : {open_, keep_, delete_}) buttons->addButton(button, QDialogButtonBox::ActionRole);
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(words_);
  layout->addWidget(list_, 1);
  layout->addWidget(buttons);
  resize(720, 360);
  FillIn();
}

QPushButton* FormRecoveredCharts::Button(const char* name, const QString& caption, Command command) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, command] { Do(command); });
  return button;
}

// The command may wait; the form may be closed meanwhile.
void FormRecoveredCharts::Do(Command command) {
  const int row = list_->indexOfTopLevelItem(list_->currentItem());
  if (row < 0) return;
  const RecoveredChart chart = listed_[static_cast<std::size_t>(row)];
  const QPointer<FormRecoveredCharts> self(this);
  setEnabled(false);
  (charts_.*command)(chart);
  if (!self) return;
  setEnabled(true);
  FillIn();
}

void FormRecoveredCharts::FillIn() {
  list_->clear();  // first: the selection that it takes away is of the old list
  listed_ = charts_.List();
  for (const RecoveredChart& chart : listed_) {
    const auto number = [&chart](std::int64_t value) {
      return chart.readable ? ToQString(NumberText(value)) : QString();
    };
    list_->addTopLevelItem(new QTreeWidgetItem({StartText(chart), chart.readable ? LengthText(chart.days) : QString(),
                                                number(chart.channels), number(chart.samples),
                                                ToQString(chart.file.filename().string())}));
  }
  if (!listed_.empty()) list_->setCurrentItem(list_->topLevelItem(0));
  words_->setText(listed_.empty()
                      ? QStringLiteral("There are no recovered charts.")
                      : QStringLiteral("Charts that were not saved in order: from runs that broke off, and those that "
                                       "gave way to another chart. They stay here until they are kept or deleted."));
  Enable();
}

void FormRecoveredCharts::Enable() {
  const int row = list_->indexOfTopLevelItem(list_->currentItem());
  const bool readable = row >= 0 && listed_[static_cast<std::size_t>(row)].readable;
  open_->setEnabled(readable && charts_.CanOpen());
  keep_->setEnabled(readable);
  delete_->setEnabled(row >= 0);
}

}  // namespace tarvolt
