// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart_view/form_chart_view.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "forms/date_entry/form_date_entry.h"
#include "forms/qt_text.h"

namespace tarvolt {
namespace {

QComboBox* TimeField(const char* name, const char* word, QWidget* parent) {
  auto* field = new QComboBox(parent);
  field->setObjectName(QString::fromLatin1(name));
  field->setEditable(true);
  field->setInsertPolicy(QComboBox::NoInsert);
  field->addItem(QString::fromLatin1(word));
  field->setMinimumWidth(190);
  return field;
}

QLineEdit* NumberField(const char* name, QWidget* parent) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(QString::fromLatin1(name));
  return field;
}

}  // namespace

FormChartView::FormChartView(const ChartWindow& window, Apply apply, Apply applyAll, QWidget* parent)
    : QWidget(parent, Qt::Window), window_(window) {
  setObjectName(QStringLiteral("FormChartView"));
  const bool isReview = window.Name.starts_with("rform");
  setWindowTitle(isReview ? QStringLiteral("Chart View for Review Chart #") + ToQString(window.Name.substr(5))
                          : QStringLiteral("Chart View for Main Window Chart "));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeX());
  layout->addWidget(MakeY());
  problem_ = new QLabel(this);
  problem_->setObjectName(QStringLiteral("lblProblem"));
  problem_->setWordWrap(true);
  layout->addWidget(problem_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* one = buttons->addButton(QStringLiteral("Apply"), QDialogButtonBox::ApplyRole);
  QPushButton* all = buttons->addButton(QStringLiteral("Apply to All"), QDialogButtonBox::ApplyRole);
  one->setObjectName(QStringLiteral("cmdApply"));
  all->setObjectName(QStringLiteral("cmdApplyAll"));
  connect(one, &QPushButton::clicked, this, [this, apply = std::move(apply)] { ApplyWith(apply); });
  connect(all, &QPushButton::clicked, this, [this, apply = std::move(applyAll)] { ApplyWith(apply); });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { close(); });
  layout->addWidget(buttons);
  Fill(ChartViewEntry());
}

QWidget* FormChartView::MakeX() {
  auto* group = new QGroupBox(QStringLiteral("Time"), this);
  auto* form = new QFormLayout(group);
  optTimes_ = new QRadioButton(QStringLiteral("From and to"), group);
  optTimes_->setObjectName(QStringLiteral("OptTimes"));
  optWidth_ = new QRadioButton(QStringLiteral("From and width"), group);
  optWidth_->setObjectName(QStringLiteral("OptWidth"));
  from_ = TimeField("TxtFrom", ChartViewEntry::kStartOfData, group);
  to_ = TimeField("TxtTo", ChartViewEntry::kEndOfData, group);
  width_ = NumberField("TxtWidth", group);
  form->addRow(optTimes_);
  form->addRow(optWidth_);
  form->addRow(QStringLiteral("From"), WithDateButton(from_, QStringLiteral("The view begins:")));
  form->addRow(QStringLiteral("To"), WithDateButton(to_, QStringLiteral("The view ends:")));
  form->addRow(QStringLiteral("Width in seconds"), width_);
  for (QRadioButton* option : {optTimes_, optWidth_})
    connect(option, &QRadioButton::toggled, this, [this] { EnableFields(); });
  return group;
}

QWidget* FormChartView::WithDateButton(QComboBox* field, const QString& prompt) {
  auto* both = new QWidget(field->parentWidget());
  auto* row = new QHBoxLayout(both);
  row->setContentsMargins(0, 0, 0, 0);
  auto* button = new QToolButton(both);
  button->setText(QStringLiteral("..."));
  button->setToolTip(QStringLiteral("Choose a date and a time"));
  row->addWidget(field, 1);
  row->addWidget(button);
  connect(button, &QToolButton::clicked, this, [this, field, prompt] {
    const TimeStamp start = window_.chart.Count() > 0 ? window_.chart.GetTime(0) : 0;
    const auto stamp =
        FormDateEntry(this, prompt, ReadViewTime(FromQString(field->currentText()), window_.chart).value_or(start));
    if (stamp) field->setEditText(ToQString(ViewTimeText(*stamp)));
  });
  return both;
}

QWidget* FormChartView::MakeY() {
  auto* group = new QGroupBox(QStringLiteral("Values"), this);
  auto* form = new QFormLayout(group);
  autoY_ = new QCheckBox(QStringLiteral("Follow the data"), group);
  autoY_->setObjectName(QStringLiteral("ChkAutoY"));
  specifyY_ = new QCheckBox(QStringLiteral("Set by hand (with the chart stopped)"), group);
  specifyY_->setObjectName(QStringLiteral("ChkSpecifyY"));
  yLow_ = NumberField("TxtYLow", group);
  yHigh_ = NumberField("TxtYHigh", group);
  form->addRow(autoY_);
  form->addRow(specifyY_);
  form->addRow(QStringLiteral("Bottom"), yLow_);
  form->addRow(QStringLiteral("Top"), yHigh_);
  connect(autoY_, &QCheckBox::toggled, this, [this](bool on) {
    if (on) specifyY_->setChecked(false);
    EnableFields();
  });
  connect(specifyY_, &QCheckBox::toggled, this, [this](bool on) {
    if (on) autoY_->setChecked(false);
    EnableFields();
  });
  return group;
}

void FormChartView::Fill(const ChartViewEntry& entry) {
  optTimes_->setChecked(!entry.byWidth);
  optWidth_->setChecked(entry.byWidth);
  from_->setEditText(ToQString(entry.from));
  to_->setEditText(ToQString(entry.to));
  width_->setText(ToQString(entry.width));
  autoY_->setChecked(entry.autoY);
  specifyY_->setChecked(entry.specifyY);
  yLow_->setText(ToQString(entry.yLow));
  yHigh_->setText(ToQString(entry.yHigh));
  problem_->clear();
  EnableFields();
}

void FormChartView::EnableFields() {
  to_->parentWidget()->setEnabled(optTimes_->isChecked());
  width_->setEnabled(optWidth_->isChecked());
  yLow_->setEnabled(specifyY_->isChecked());
  yHigh_->setEnabled(specifyY_->isChecked());
}

ChartViewEntry FormChartView::Entry() const {
  ChartViewEntry entry;
  entry.byWidth = optWidth_->isChecked();
  entry.from = FromQString(from_->currentText());
  entry.to = FromQString(to_->currentText());
  entry.width = FromQString(width_->text());
  entry.autoY = autoY_->isChecked();
  entry.specifyY = specifyY_->isChecked();
  entry.yLow = FromQString(yLow_->text());
  entry.yHigh = FromQString(yHigh_->text());
  return entry;
}

void FormChartView::ApplyWith(const Apply& apply) {
  problem_->setText(ToQString(apply(Entry())));
}

void FormChartView::closeEvent(QCloseEvent* event) {
  if (closed_) closed_();
  QWidget::closeEvent(event);
}

}  // namespace tarvolt
