// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/look/form_fonts.h"

#include <QDialogButtonBox>
#include <QFontDialog>
#include <QFormLayout>
#include <QPushButton>

#include "forms/plot/chart_colors.h"
#include "forms/qt_text.h"

namespace tarvolt {
namespace {

struct Row {
  const char* name;
  const char* caption;
  ChartFont ChartFonts::*font;
};

constexpr Row kRows[] = {{"TitleFont", "Title", &ChartFonts::title},
                         {"XYLabelFont", "Axis titles", &ChartFonts::axisLabels},
                         {"LabelFont", "Ticks, legend and notations", &ChartFonts::labels}};

QString Words(const ChartFont& font) {
  QString words = ToQString(font.name) + QStringLiteral(", %1 pt").arg(font.size);
  if (font.bold) words += QStringLiteral(", bold");
  if (font.italic) words += QStringLiteral(", italic");
  return words;
}

}  // namespace

FormFonts::FormFonts(const ChartFonts& fonts, QWidget* parent) : QDialog(parent), fonts_(fonts) {
  setObjectName(QStringLiteral("FormFonts"));
  setWindowTitle(QStringLiteral("Chart Fonts"));
  auto* form = new QFormLayout(this);
  for (std::size_t row = 0; row < buttons_.size(); ++row) {
    buttons_[row] = new QPushButton(this);
    buttons_[row]->setObjectName(QString::fromLatin1(kRows[row].name));
    buttons_[row]->setMinimumWidth(220);
    form->addRow(QString::fromLatin1(kRows[row].caption), buttons_[row]);
    connect(buttons_[row], &QPushButton::clicked, this, [this, row] { Pick(row); });
    Show(row);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(buttons);
}

void FormFonts::Show(std::size_t row) {
  buttons_[row]->setText(Words(fonts_.*kRows[row].font));
}

void FormFonts::Pick(std::size_t row) {
  bool chosen = false;
  const QFont font = QFontDialog::getFont(&chosen, FontOf(fonts_.*kRows[row].font), this);
  if (!chosen) return;
  fonts_.*kRows[row].font = {FromQString(font.family()), font.pointSizeF(), font.bold(), font.italic()};
  Show(row);
}

}  // namespace tarvolt
