// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QWidget>
#include <array>

#include "automation/triggers/trigger_slots.h"

namespace tarvolt {

/// The fields of one trigger.
class TriggerPage final : public QWidget {
 public:
  explicit TriggerPage(QWidget* parent);

  void Show(const TriggerDefinition& trigger);

  /// The trigger as its fields have it. The first field that holds no number is given in `wrong`, else null.
  TriggerDefinition Read(QLineEdit*& wrong) const;

  /// The channels that it watches, counted from 0.
  void ShowWatched(int channel, bool watched) { watched_.at(channel)->setChecked(watched); }
  bool Watched(int channel) const { return watched_.at(channel)->isChecked(); }

 private:
  /// The fields of one kind of LabJack.
  struct LabJack {
    QComboBox* command = nullptr;
    QSpinBox* channel = nullptr;
    QLineEdit* value = nullptr;
    QLabel* valueLabel = nullptr;
  };

  QFormLayout* AddGroup(const QString& title);
  QSpinBox* AddCount(QFormLayout& form, const char* name, const QString& caption, const QString& tip);
  QCheckBox* AddCheck(const char* name, const QString& caption);
  void AddCondition();
  void AddWatched(QFormLayout& form);
  void AddAction();
  LabJack AddLabJack(const QString& name);
  void AddPort();
  void AddNotes();
  void KeepRoom();
  void FollowAction();
  void NameValue(const LabJack& device);
  TriggerAction Chosen() const;

  TriggerDefinition shown_;
  QFormLayout* action_ = nullptr;
  QLineEdit* threshold_ = nullptr;
  QCheckBox* below_ = nullptr;
  QSpinBox* minDuration_ = nullptr;
  QSpinBox* minReset_ = nullptr;
  QSpinBox* rest_ = nullptr;
  QCheckBox* oneShot_ = nullptr;
  std::array<QCheckBox*, kChannels> watched_{};
  QComboBox* type_ = nullptr;
  QLineEdit* parameter_ = nullptr;
  LabJack u3_;
  LabJack u12_;
  QWidget* portRow_ = nullptr;
  QLineEdit* port_ = nullptr;
  QComboBox* pin_ = nullptr;
  QLineEdit* pinValue_ = nullptr;
  QLineEdit* notation_ = nullptr;
  QCheckBox* annotate_ = nullptr;
  QCheckBox* inObLog_ = nullptr;
  QCheckBox* inSessionLog_ = nullptr;
  QCheckBox* inStatusBar_ = nullptr;
};

/// A row of check boxes for the channels, named `name` and the channel's number from 1.
QWidget* MakeChannelRow(const QString& name, std::array<QCheckBox*, kChannels>& boxes, QWidget* parent);

}  // namespace tarvolt
