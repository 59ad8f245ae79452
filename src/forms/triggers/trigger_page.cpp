// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/triggers/trigger_page.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "forms/qt_text.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kNumberWidth = 130;

QLineEdit* NumberLine(const char* name, QWidget* parent) {
  auto* line = new QLineEdit(parent);
  line->setObjectName(QString::fromLatin1(name));
  line->setFixedWidth(kNumberWidth);
  return line;
}

void ShowNumber(QLineEdit& line, double value) {
  line.setText(ToQString(NumberText(value)));
}

// What follows reads a field into the value that it was shown from. A file may hold what a field cannot show: as long
// as the field is as it was shown, the value stays.

void ReadNumber(QLineEdit* line, double& value, QLineEdit*& wrong) {
  if (line->text() == ToQString(NumberText(value))) return;
  const auto number = ParseNumber(FromQString(line->text()));
  if (number) {
    value = *number;
  } else if (wrong == nullptr) {
    wrong = line;
  }
}

QString HexOf(std::int32_t value) {
  return QString::number(value, 16).toUpper();
}

void ReadHex(QLineEdit* line, std::int32_t& value, QLineEdit*& wrong) {
  if (line->text() == HexOf(value)) return;
  bool good = false;
  const int number = line->text().trimmed().toInt(&good, 16);
  if (good) {
    value = number;
  } else if (wrong == nullptr) {
    wrong = line;
  }
}

template <class Number>
void ReadCount(const QSpinBox& field, Number& value) {
  if (field.value() != std::clamp<int>(value, field.minimum(), field.maximum())) {
    value = static_cast<Number>(field.value());
  }
}

int RowOfName(const QComboBox& list, const std::string& name) {
  return std::max(list.findData(ToQString(Upper(Trim(name)))), 0);
}

void ReadName(const QComboBox& list, std::string& name) {
  if (list.currentIndex() != RowOfName(list, name)) name = FromQString(list.currentData().toString());
}

int RowOfPin(const QComboBox& list, std::int32_t pin) {
  return std::clamp<int>(pin, 1, list.count()) - 1;
}

}  // namespace

QWidget* MakeChannelRow(const QString& name, std::array<QCheckBox*, kChannels>& boxes, QWidget* parent) {
  auto* row = new QWidget(parent);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  for (int channel = 0; channel < kChannels; ++channel) {
    boxes[channel] = new QCheckBox(QString::number(channel + 1), row);
    boxes[channel]->setObjectName(name + QString::number(channel + 1));
    layout->addWidget(boxes[channel]);
  }
  layout->addStretch();
  return row;
}

TriggerPage::TriggerPage(QWidget* parent) : QWidget(parent) {
  new QVBoxLayout(this);
  AddCondition();
  AddAction();
  AddNotes();
  static_cast<QVBoxLayout*>(layout())->addStretch();
  KeepRoom();
  Show({});
}

// The dialog does not change its size with the action: there is room for the one with the most fields.
void TriggerPage::KeepRoom() {
  for (QWidget* field : findChildren<QWidget*>()) field->ensurePolished();
  type_->setCurrentIndex(type_->findData(QStringLiteral("LPT")));
  for (QGroupBox* box : findChildren<QGroupBox*>()) box->layout()->invalidate();
  layout()->invalidate();
  setMinimumHeight(sizeHint().height());
}

QFormLayout* TriggerPage::AddGroup(const QString& title) {
  auto* box = new QGroupBox(title, this);
  auto* form = new QFormLayout(box);
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  layout()->addWidget(box);
  return form;
}

QSpinBox* TriggerPage::AddCount(QFormLayout& form, const char* name, const QString& caption, const QString& tip) {
  auto* count = new QSpinBox(this);
  count->setObjectName(QString::fromLatin1(name));
  count->setRange(0, std::numeric_limits<std::int32_t>::max());
  count->setSuffix(QStringLiteral(" samples"));
  count->setFixedWidth(kNumberWidth + 30);
  count->setToolTip(tip);
  form.addRow(caption, count);
  return count;
}

QCheckBox* TriggerPage::AddCheck(const char* name, const QString& caption) {
  auto* box = new QCheckBox(caption, this);
  box->setObjectName(QString::fromLatin1(name));
  return box;
}

void TriggerPage::AddCondition() {
  QFormLayout& form = *AddGroup(QStringLiteral("Fires"));
  threshold_ = NumberLine("TxtThreshold", this);
  form.addRow(QStringLiteral("At or above the threshold"), threshold_);
  below_ = AddCheck("ChkTriggerBelowThreshold", QStringLiteral("Fire at or below it instead"));
  form.addRow(below_);
  auto* caption = static_cast<QLabel*>(form.labelForField(threshold_));
  connect(below_, &QCheckBox::toggled, this, [caption](bool below) {
    caption->setText(below ? QStringLiteral("At or below the threshold") : QStringLiteral("At or above the threshold"));
  });
  minDuration_ = AddCount(form, "SpnMinDuration", QStringLiteral("After"),
                          QStringLiteral("Samples in a row past the threshold needed to fire"));
  minReset_ = AddCount(form, "SpnMinResetSamples", QStringLiteral("Reset after"),
                       QStringLiteral("Samples in a row back from the threshold before it can fire again"));
  rest_ = AddCount(form, "SpnRestPeriod", QStringLiteral("Then rest for"),
                   QStringLiteral("Samples ignored after the reset"));
  oneShot_ = AddCheck("ChkOneShot", QStringLiteral("Fire once in a run"));
  form.addRow(oneShot_);
  form.addRow(QStringLiteral("Watches channels"), MakeChannelRow(QStringLiteral("ChkWatch"), watched_, this));
}

void TriggerPage::AddAction() {
  action_ = AddGroup(QStringLiteral("Action"));
  type_ = new QComboBox(this);
  type_->setObjectName(QStringLiteral("cmbTriggerActionType"));
  type_->addItem(QStringLiteral("(notes only)"), QString());
  for (const char* name : {"Execute", "LJU3", "LJU12", "LPT"}) {
    type_->addItem(QString::fromLatin1(name), ToQString(Upper(name)));
  }
  action_->addRow(QStringLiteral("When it fires"), type_);
  parameter_ = new QLineEdit(this);
  parameter_->setObjectName(QStringLiteral("TxtParameter"));
  parameter_->setToolTip(
      QStringLiteral("A program and its arguments. It is started without a shell; double quotes hold words together."));
  action_->addRow(QStringLiteral("Action Parameter(s)"), parameter_);
  u3_ = AddLabJack(QStringLiteral("LJU3"));
  u12_ = AddLabJack(QStringLiteral("LJU12"));
  AddPort();
  connect(type_, &QComboBox::currentIndexChanged, this, [this] { FollowAction(); });
}

TriggerPage::LabJack TriggerPage::AddLabJack(const QString& name) {
  LabJack device;
  device.command = new QComboBox(this);
  device.command->setObjectName(QStringLiteral("Cbo") + name + QStringLiteral("command"));
  device.command->addItem(QStringLiteral("Digital output"), QStringLiteral("DO"));
  device.command->addItem(QStringLiteral("Analog output"), QStringLiteral("AO"));
  action_->addRow(QStringLiteral("Command"), device.command);
  device.channel = new QSpinBox(this);
  device.channel->setObjectName(QStringLiteral("Spn") + name + QStringLiteral("channel"));
  device.channel->setRange(std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max());
  device.channel->setFixedWidth(kNumberWidth);
  action_->addRow(QStringLiteral("Output channel"), device.channel);
  device.value = NumberLine("", this);
  device.value->setObjectName(QStringLiteral("Txt") + name + QStringLiteral("value"));
  device.valueLabel = new QLabel(this);
  device.valueLabel->setObjectName(QStringLiteral("Lbl") + name + QStringLiteral("value"));
  action_->addRow(device.valueLabel, device.value);
  connect(device.command, &QComboBox::currentIndexChanged, this, [this, device] { NameValue(device); });
  return device;
}

void TriggerPage::NameValue(const LabJack& device) {
  const bool analog = device.command->currentData().toString() == QStringLiteral("AO");
  device.valueLabel->setText(analog ? QStringLiteral("DAC Voltage") : QStringLiteral("1 = set high ; 0 = set low"));
}

void TriggerPage::AddPort() {
  portRow_ = new QWidget(this);
  auto* row = new QHBoxLayout(portRow_);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new QLabel(QStringLiteral("&H"), portRow_));
  port_ = NumberLine("TxtLPTnum", portRow_);
  port_->setToolTip(QStringLiteral("Hexadecimal, such as 378. C8 and below is no port: nothing is set."));
  row->addWidget(port_);
  row->addStretch();
  action_->addRow(QStringLiteral("LPT Base Address"), portRow_);
  pin_ = new QComboBox(this);
  pin_->setObjectName(QStringLiteral("CboLPTpin"));
  for (const int pin : {1, 2, 3, 4, 5, 6, 7, 8, 9, 14, 16, 17}) pin_->addItem(QStringLiteral("PIN %1").arg(pin));
  action_->addRow(QStringLiteral("LPT Pin to output."), pin_);
  pinValue_ = NumberLine("TxtLPTvalue", this);
  action_->addRow(QStringLiteral("1=set pin high ; 0=set pin low"), pinValue_);
}

void TriggerPage::AddNotes() {
  QFormLayout& form = *AddGroup(QStringLiteral("Notes"));
  notation_ = new QLineEdit(this);
  notation_->setObjectName(QStringLiteral("TxtNotation"));
  notation_->setToolTip(
      QStringLiteral("Tags in the note and in the parameters: [SAMPLE NUMBER], [DATE TIME], "
                     "[DATE FORMAT yyyy/mm/dd hh:nn:ss], [INTERNET IP].\n"
                     "[INTERNET IP] is the address in the local network: the one on the internet is not found yet."));
  form.addRow(QStringLiteral("Note"), notation_);
  annotate_ = AddCheck("ChkAnnotate", QStringLiteral("On the chart"));
  inObLog_ = AddCheck("ChkShowInObLog", QStringLiteral("In the observer log"));
  inSessionLog_ = AddCheck("ChkShowInSessionLog", QStringLiteral("In the session log"));
  inStatusBar_ = AddCheck("ChkShowInStatusBar", QStringLiteral("In the status bar"));
  auto* grid = new QGridLayout;
  grid->addWidget(annotate_, 0, 0);
  grid->addWidget(inObLog_, 0, 1);
  grid->addWidget(inSessionLog_, 1, 0);
  grid->addWidget(inStatusBar_, 1, 1);
  form.addRow(QStringLiteral("Show it"), grid);
}

TriggerAction TriggerPage::Chosen() const {
  return ActionOf(FromQString(type_->currentData().toString()));
}

void TriggerPage::FollowAction() {
  const TriggerAction action = Chosen();
  action_->setRowVisible(parameter_, action == TriggerAction::Execute);
  for (const LabJack& device : {u3_, u12_}) {
    const bool shown = action == (device.command == u3_.command ? TriggerAction::LjU3 : TriggerAction::LjU12);
    for (QWidget* field : {static_cast<QWidget*>(device.command), static_cast<QWidget*>(device.channel),
                           static_cast<QWidget*>(device.value)}) {
      action_->setRowVisible(field, shown);
    }
    NameValue(device);
  }
  for (QWidget* field : {portRow_, static_cast<QWidget*>(pin_), static_cast<QWidget*>(pinValue_)}) {
    action_->setRowVisible(field, action == TriggerAction::Lpt);
  }
}

void TriggerPage::Show(const TriggerDefinition& trigger) {
  shown_ = trigger;
  ShowNumber(*threshold_, trigger.Threshold);
  below_->setChecked(trigger.TriggerBelowThreshold);
  minDuration_->setValue(trigger.MinDuration);
  minReset_->setValue(trigger.MinResetSamples);
  rest_->setValue(trigger.RestPeriod);
  oneShot_->setChecked(trigger.OneShot);
  type_->setCurrentIndex(RowOfName(*type_, trigger.Action));
  parameter_->setText(ToQString(trigger.Parameter));
  u3_.command->setCurrentIndex(RowOfName(*u3_.command, trigger.LJU3command));
  u3_.channel->setValue(trigger.LJU3channel);
  ShowNumber(*u3_.value, trigger.LJU3value);
  u12_.command->setCurrentIndex(RowOfName(*u12_.command, trigger.LJU12command));
  u12_.channel->setValue(trigger.LJU12channel);
  ShowNumber(*u12_.value, trigger.LJU12value);
  port_->setText(HexOf(trigger.LPTnum));
  pin_->setCurrentIndex(RowOfPin(*pin_, trigger.LPTpin));
  ShowNumber(*pinValue_, trigger.LPTvalue);
  notation_->setText(ToQString(trigger.Notation));
  annotate_->setChecked(trigger.Annotate);
  inObLog_->setChecked(trigger.ShowInObLog);
  inSessionLog_->setChecked(trigger.ShowInSessionLog);
  inStatusBar_->setChecked(trigger.ShowInStatusBar);
  FollowAction();
}

TriggerDefinition TriggerPage::Read(QLineEdit*& wrong) const {
  TriggerDefinition trigger = shown_;
  wrong = nullptr;
  ReadNumber(threshold_, trigger.Threshold, wrong);
  trigger.TriggerBelowThreshold = below_->isChecked();
  ReadCount(*minDuration_, trigger.MinDuration);
  ReadCount(*minReset_, trigger.MinResetSamples);
  ReadCount(*rest_, trigger.RestPeriod);
  trigger.OneShot = oneShot_->isChecked();
  ReadName(*type_, trigger.Action);
  trigger.Parameter = FromQString(parameter_->text());
  ReadName(*u3_.command, trigger.LJU3command);
  ReadCount(*u3_.channel, trigger.LJU3channel);
  ReadNumber(u3_.value, trigger.LJU3value, wrong);
  ReadName(*u12_.command, trigger.LJU12command);
  ReadCount(*u12_.channel, trigger.LJU12channel);
  ReadNumber(u12_.value, trigger.LJU12value, wrong);
  ReadHex(port_, trigger.LPTnum, wrong);
  if (pin_->currentIndex() != RowOfPin(*pin_, trigger.LPTpin)) trigger.LPTpin = pin_->currentIndex() + 1;
  ReadNumber(pinValue_, trigger.LPTvalue, wrong);
  trigger.Notation = FromQString(notation_->text());
  trigger.Annotate = annotate_->isChecked();
  trigger.ShowInObLog = inObLog_->isChecked();
  trigger.ShowInSessionLog = inSessionLog_->isChecked();
  trigger.ShowInStatusBar = inStatusBar_->isChecked();
  return trigger;
}

}  // namespace tarvolt
