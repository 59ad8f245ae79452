// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/look/form_tick_grid.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

namespace tarvolt {
namespace {

constexpr int kMostTicks = 50;

struct Count {
  const char* name;
  const char* caption;
  int least;
  int TickGrid::*value;
};

constexpr Count kCounts[] = {
    {"XAxisTickMajorCount", "Major ticks, x axis", 1, &TickGrid::XAxisTickMajorCount},
    {"XAxisTickMinorCount", "Minor ticks, x axis", 0, &TickGrid::XAxisTickMinorCount},
    {"YAxisTickMajorCount", "Major ticks, y axis", 1, &TickGrid::YAxisTickMajorCount},
    {"YAxisTickMinorCount", "Minor ticks, y axis", 0, &TickGrid::YAxisTickMinorCount},
};

struct Style {
  const char* name;
  const char* caption;
  int TickGrid::*value;
};

constexpr Style kStyles[] = {{"GridLineStyle", "Lines of the grid", &TickGrid::GridLineStyle},
                             {"ChannelLineStyle", "Lines of the channels", &TickGrid::ChannelLineStyle}};

}  // namespace

FormTickGrid::FormTickGrid(const TickGrid& ticks, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("FormTickGrid"));
  setWindowTitle(QStringLiteral("Ticks and Grid"));
  auto* form = new QFormLayout(this);
  for (std::size_t i = 0; i < counts_.size(); ++i) {
    counts_[i] = new QSpinBox(this);
    counts_[i]->setObjectName(QString::fromLatin1(kCounts[i].name));
    counts_[i]->setRange(kCounts[i].least, kMostTicks);
    form->addRow(QString::fromLatin1(kCounts[i].caption), counts_[i]);
  }
  for (std::size_t i = 0; i < styles_.size(); ++i) {
    styles_[i] = new QComboBox(this);
    styles_[i]->setObjectName(QString::fromLatin1(kStyles[i].name));
    styles_[i]->addItems({QStringLiteral("Solid"), QStringLiteral("Dashed"), QStringLiteral("Dotted"),
                          QStringLiteral("Dash and dot"), QStringLiteral("Dash and two dots")});
    form->addRow(QString::fromLatin1(kStyles[i].caption), styles_[i]);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(buttons);
  LoadIntoControls(ticks);
}

void FormTickGrid::LoadIntoControls(const TickGrid& ticks) {
  for (std::size_t i = 0; i < counts_.size(); ++i) counts_[i]->setValue(ticks.*kCounts[i].value);
  for (std::size_t i = 0; i < styles_.size(); ++i) styles_[i]->setCurrentIndex(ticks.*kStyles[i].value);
}

TickGrid FormTickGrid::GetFromControls() const {
  TickGrid ticks;
  for (std::size_t i = 0; i < counts_.size(); ++i) ticks.*kCounts[i].value = counts_[i]->value();
  for (std::size_t i = 0; i < styles_.size(); ++i) ticks.*kStyles[i].value = styles_[i]->currentIndex();
  return ticks;
}

}  // namespace tarvolt
