// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/look/form_colors.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarvolt {
namespace {

struct Item {
  const char* name;
  const char* caption;
  ChartColor ChartColors::*color;
};

constexpr Item kItemRows[] = {
    {"AxisGridColor", "Axes and grid", &ChartColors::AxisGridColor},
    {"BackGroundColor", "Background", &ChartColors::BackGroundColor},
    {"GridBackGroundColor", "Background of the grid", &ChartColors::GridBackGroundColor},
    {"TitleFontColor", "Title", &ChartColors::TitleFontColor},
    {"LabelFontColor", "Legend", &ChartColors::LabelFontColor},
    {"XAxisLabelFontColor", "Labels of the x axis", &ChartColors::XAxisLabelFontColor},
    {"YAxisLabelFontColor", "Labels of the y axis", &ChartColors::YAxisLabelFontColor},
    {"XAxisTickMajorColor", "Major ticks, x axis", &ChartColors::XAxisTickMajorColor},
    {"XAxisTickMinorColor", "Minor ticks, x axis", &ChartColors::XAxisTickMinorColor},
    {"YAxisTickMajorColor", "Major ticks, y axis", &ChartColors::YAxisTickMajorColor},
    {"YAxisTickMinorColor", "Minor ticks, y axis", &ChartColors::YAxisTickMinorColor},
    {"ChannelColor", "Value display", &ChartColors::ChannelColor},
    {"ToolbarActiveModeFontColor", "Buttons in use", &ChartColors::ToolbarActiveModeFontColor},
    {"ToolbarInactiveModeFontColor", "Buttons not in use", &ChartColors::ToolbarInactiveModeFontColor},
    {"CursorColor", "Cursor and time marker", &ChartColors::CursorColor},
    {"ChartNotationColor", "Notations", &ChartColors::ChartNotationColor},
};

ColorButton* Put(QGridLayout* grid, int row, int column, const QString& caption, const QString& name) {
  auto* label = new QLabel(caption, grid->parentWidget());
  auto* button = new ColorButton(0, grid->parentWidget());
  button->setObjectName(name);
  grid->addWidget(label, row, 2 * column);
  grid->addWidget(button, row, 2 * column + 1);
  return button;
}

}  // namespace

FormColors::FormColors(const ChartColors& colors, Save save, QWidget* parent) : QDialog(parent) {
  static_assert(std::size(kItemRows) == kItems);
  setObjectName(QStringLiteral("FormColors"));
  setWindowTitle(QStringLiteral("Chart Colors"));
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  layout->addLayout(grid);
  constexpr int kRows = 8;
  for (int channel = 0; channel < static_cast<int>(pens_.size()); ++channel)
    pens_[channel] =
        Put(grid, channel, 0, QStringLiteral("Channel %1").arg(channel + 1), QStringLiteral("PenColor%1").arg(channel));
  for (int i = 0; i < static_cast<int>(kItems); ++i)
    labels_[i] = Put(grid, i % kRows, 1 + i / kRows, QString::fromLatin1(kItemRows[i].caption),
                     QString::fromLatin1(kItemRows[i].name));
  grid->setHorizontalSpacing(14);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* saveButton = buttons->addButton(QStringLiteral("Save"), QDialogButtonBox::ApplyRole);
  QPushButton* restore = buttons->addButton(QStringLiteral("Restore Defaults"), QDialogButtonBox::ResetRole);
  saveButton->setObjectName(QStringLiteral("CmdSave"));
  saveButton->setDefault(true);
  restore->setAutoDefault(false);
  restore->setObjectName(QStringLiteral("CmdRestore"));
  connect(saveButton, &QPushButton::clicked, this, [this, save = std::move(save)] { save(GetColorsFromLabels()); });
  connect(restore, &QPushButton::clicked, this, [this] { LoadIntoLabels(ChartColors()); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  LoadIntoLabels(colors);
}

void FormColors::LoadIntoLabels(const ChartColors& colors) {
  for (std::size_t i = 0; i < pens_.size(); ++i) pens_[i]->SetColor(colors.PenColor[i]);
  for (std::size_t i = 0; i < kItems; ++i) labels_[i]->SetColor(colors.*kItemRows[i].color);
}

ChartColors FormColors::GetColorsFromLabels() const {
  ChartColors colors;
  for (std::size_t i = 0; i < pens_.size(); ++i) colors.PenColor[i] = pens_[i]->Color();
  for (std::size_t i = 0; i < kItems; ++i) colors.*kItemRows[i].color = labels_[i]->Color();
  return colors;
}

}  // namespace tarvolt
