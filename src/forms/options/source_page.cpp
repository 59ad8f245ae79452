// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/source_page.h"

#include <QColorDialog>
#include <QGroupBox>

#include "forms/plot/chart_colors.h"
#include "forms/qt_text.h"
#include "sources/source_table.h"
#include "text/number.h"

namespace tarvolt {
namespace {

enum Column { kChannel, kSource, kInput, kLabel, kDetection, kOffset, kPen, kLine };

constexpr const char* kPenColor = "PenColor";

QString KeyOf(const char* before, int row, const char* behind = "") {
  return QString::fromLatin1(before) + QString::number(row) + QString::fromLatin1(behind);
}

void ShowPen(QPushButton& button, const std::string& text) {
  const QColor color = ColorOf(ValLong(text));
  QPixmap swatch(28, 14);
  swatch.fill(color);
  button.setIcon(swatch);
  button.setIconSize(swatch.size());
  button.setProperty(kPenColor, ToQString(text));
}

}  // namespace

SourcePage::SourcePage(OptionFields& fields, QWidget* parent) : QWidget(parent), fields_(fields) {
  auto* layout = new QVBoxLayout(this);
  auto* box = new QGroupBox(QStringLiteral("Channels"), this);
  grid_ = new QGridLayout(box);
  AddHeadings();
  for (int row = 0; row < kChannels; ++row) AddRow(row);
  layout->addWidget(box);
  auto* words = new QLabel(QStringLiteral("The first \"none\" ends the list of channels that a chart has. Sources and "
                                          "detectors of a chart that runs stay as they are until the next one."),
                           this);
  words->setWordWrap(true);
  layout->addWidget(words);
  auto* offsets = new QCheckBox(QStringLiteral("Add the offsets to the values of a new chart"), this);
  fields_.Add("UseOffsets", *offsets);
  layout->addWidget(offsets);
  layout->addStretch();
}

void SourcePage::AddHeadings() {
  const QStringList headings = {QStringLiteral("CH"),    QStringLiteral("Source"),   QStringLiteral("Input"),
                                QStringLiteral("Label"), QStringLiteral("Detector"), QStringLiteral("Offset"),
                                QStringLiteral("Pen"),   QStringLiteral("Line")};
  for (int column = 0; column < headings.size(); ++column)
    grid_->addWidget(new QLabel(headings[column], this), 0, column);
  grid_->setColumnStretch(kLabel, 1);
}

void SourcePage::AddRow(int row) {
  grid_->addWidget(new QLabel(QString::number(row + 1), this), row + 1, kChannel);
  AddSource(row);
  AddLine(row, kLabel, KeyOf("Channel", row, "Label"), 0)->setMinimumWidth(90);
  rows_[row].detection =
      AddList(row, kDetection, "Detection",
              {{QStringLiteral("Peak"), "1"}, {QStringLiteral("Average"), "2"}, {QStringLiteral("Power"), "3"}});
  AddLine(row, kOffset, KeyOf("Channel", row, "Offset"), 70);
  AddPen(row, kPen);
  AddList(row, kLine, "LineStyle",
          {{QStringLiteral("As the chart's"), "0"},
           {QStringLiteral("Dashes"), "1"},
           {QStringLiteral("Dots"), "2"},
           {QStringLiteral("Dash, dot"), "3"},
           {QStringLiteral("Dash, dots"), "4"}});
}

// The two lists of a row are one setting.
void SourcePage::AddSource(int row) {
  auto* source = new QComboBox(this);
  source->setObjectName(KeyOf("CboDsrc", row));
  for (const std::string& name : FirstListRows()) source->addItem(ToQString(name));
  auto* channel = new QComboBox(this);
  channel->setObjectName(KeyOf("CboDsrcCH", row));
  for (int number = 1; number <= kChannels; ++number) channel->addItem(QStringLiteral("CH%1").arg(number));
  rows_[row].source = source;
  rows_[row].channel = channel;
  grid_->addWidget(source, row + 1, kSource);
  grid_->addWidget(channel, row + 1, kInput);
  fields_.Add(
      KeyOf("Dsrc", row).toStdString(), *source,
      [source, channel] {
        return NumberText(std::int64_t{IndexToSrc(source->currentIndex(), channel->currentIndex())});
      },
      [source, channel](const std::string& text) {
        const DataSourceId id = RoundToInt16(Val(text));
        source->setCurrentIndex(SrcToIndex(id));
        channel->setCurrentIndex(HasChannels(SrcToIndex(id)) ? SrcToADCCH(id) : 0);
      });
  for (QComboBox* list : {source, channel}) {
    connect(list, &QComboBox::currentIndexChanged, this, [this] { fields_.Touched(); });
  }
}

QComboBox* SourcePage::AddList(int row, int column, const char* key, const std::vector<OptionPage::Item>& items) {
  auto* list = new QComboBox(this);
  for (const OptionPage::Item& item : items) list->addItem(item.first, QString::fromLatin1(item.second));
  fields_.Add(KeyOf(key, row).toStdString(), *list);
  grid_->addWidget(list, row + 1, column);
  rows_[row].rest.push_back(list);
  return list;
}

QLineEdit* SourcePage::AddLine(int row, int column, const QString& key, int width) {
  auto* line = new QLineEdit(this);
  if (width > 0) line->setFixedWidth(width);
  fields_.Add(key.toStdString(), *line);
  grid_->addWidget(line, row + 1, column);
  rows_[row].rest.push_back(line);
  return line;
}

void SourcePage::AddPen(int row, int column) {
  auto* button = new QPushButton(this);
  button->setObjectName(KeyOf("cmdPenColor", row));
  button->setAutoDefault(false);
  button->setToolTip(QStringLiteral("Colour of the pen of channel %1").arg(row + 1));
  fields_.Add(
      KeyOf("Channel", row, "PenColor").toStdString(), *button,
      [button] { return FromQString(button->property(kPenColor).toString()); },
      [button](const std::string& text) { ShowPen(*button, text); });
  connect(button, &QPushButton::clicked, this, [this, button] {
    const QColor before = ColorOf(button->property(kPenColor).toString().toInt());
    const QColor chosen = QColorDialog::getColor(before, this, button->toolTip());
    if (!chosen.isValid()) return;
    ShowPen(*button, NumberText(std::int64_t{ChartColorOf(chosen)}));
    fields_.Touched();
  });
  grid_->addWidget(button, row + 1, column);
  rows_[row].rest.push_back(button);
}

void SourcePage::SetDsrcToolTip(const Settings& draft) {
  bool counts = true;  // up to the first "none" and with it
  for (int index = 0; index < kChannels; ++index) {
    const Row& row = rows_[index];
    const DataSourceId source = IndexToSrc(row.source->currentIndex(), row.channel->currentIndex());
    row.source->setToolTip(ToQString(DsrcToolTip(draft, index)));
    row.source->setEnabled(counts);
    counts = counts && source != 0;
    row.channel->setEnabled(counts && HasChannels(row.source->currentIndex()));
    for (QWidget* widget : row.rest) widget->setEnabled(counts);
    row.detection->setEnabled(counts && (source == 1 || source == 2));
  }
}

}  // namespace tarvolt
