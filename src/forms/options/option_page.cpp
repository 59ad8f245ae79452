// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/option_page.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

#include "config/settings_table.h"
#include "forms/qt_text.h"

namespace tarvolt {
namespace {

constexpr int kNumberWidth = 110;

}  // namespace

QScrollArea* Scrolling(QWidget* page, QWidget* parent) {
  auto* area = new QScrollArea(parent);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidget(page);
  return area;
}

void FitToPages(QWidget& dialog) {
  constexpr int kWindowFrame = 60;
  constexpr int kBesidePages = 50;
  QSize page;
  int area = 0;
  for (const QScrollArea* pages : dialog.findChildren<QScrollArea*>()) {
    const int bar = pages->verticalScrollBar()->sizeHint().width();
    page = page.expandedTo(
        {pages->widget()->minimumSizeHint().width() + bar + kBesidePages, pages->widget()->sizeHint().height()});
    area = std::max(area, pages->sizeHint().height());
  }
  if (const auto* tabs = dialog.findChild<QTabWidget*>()) {
    page.setWidth(std::max(page.width(), tabs->tabBar()->sizeHint().width() + kBesidePages));
  }
  const QSize hint = dialog.sizeHint();
  const QSize wanted(std::max(hint.width(), page.width()), hint.height() + page.height() - area);
  const QSize room = dialog.screen()->availableGeometry().size() - QSize(0, kWindowFrame);
  dialog.resize(wanted.boundedTo(room));
}

OptionPage::OptionPage(OptionFields& fields, QWidget* parent)
    : QWidget(parent), fields_(fields), layout_(new QVBoxLayout(this)) {}

void OptionPage::Group(const QString& title) {
  auto* box = new QGroupBox(title, this);
  form_ = new QFormLayout(box);
  form_->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  form_->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  layout_->addWidget(box);
}

QFormLayout& OptionPage::Form() {
  if (form_ == nullptr) Group({});
  return *form_;
}

QLineEdit& OptionPage::Line(const char* key, const QString& caption, const QString& unit) {
  auto* line = new QLineEdit(this);
  fields_.Add(key, *line);
  const bool isNumber = KindOfSetting(key) == SettingKind::Number || !unit.isEmpty();
  if (!isNumber) {
    Form().addRow(caption, line);
    return *line;
  }
  line->setFixedWidth(kNumberWidth);
  auto* row = new QHBoxLayout;
  row->addWidget(line);
  auto* unitLabel = new QLabel(unit, this);
  unitLabel->setObjectName(QStringLiteral("Lbl") + QString::fromLatin1(key));
  row->addWidget(unitLabel);
  row->addStretch();
  Form().addRow(caption, row);
  if (auto* label = qobject_cast<QLabel*>(Form().labelForField(row))) label->setBuddy(line);
  return *line;
}

QCheckBox& OptionPage::Check(const char* key, const QString& caption) {
  auto* box = new QCheckBox(caption, this);
  fields_.Add(key, *box);
  Form().addRow(box);
  return *box;
}

QComboBox& OptionPage::List(const char* key, const QString& caption, const std::vector<Item>& items) {
  auto* list = new QComboBox(this);
  for (const Item& item : items) list->addItem(item.first, QString::fromLatin1(item.second));
  fields_.Add(key, *list);
  Form().addRow(caption, list);
  return *list;
}

QComboBox& OptionPage::SoundCards(const std::vector<std::string>& cards) {
  constexpr int kFewestLetters = 24;
  QComboBox& list = List("SoundCardName", QStringLiteral("Sound card"), {});
  list.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list.setMinimumContentsLength(kFewestLetters);
  list.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  for (const std::string& card : cards) list.addItem(ToQString(card), ToQString(card));
  return list;
}

void OptionPage::Browse(const char* key, const QString& caption, const char* button,
                        std::function<QString(const QString& text)> chosen) {
  auto* line = new QLineEdit(this);
  fields_.Add(key, *line);
  auto* browse = new QPushButton(QStringLiteral("Browse..."), this);
  browse->setObjectName(QString::fromLatin1(button));
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, [line, chosen = std::move(chosen)] {
    const QString text = chosen(line->text());
    if (!text.isEmpty()) line->setText(text);
  });
  auto* row = new QHBoxLayout;
  row->addWidget(line, 1);
  row->addWidget(browse);
  Form().addRow(caption, row);
  if (auto* label = qobject_cast<QLabel*>(Form().labelForField(row))) label->setBuddy(line);
}

QLabel& OptionPage::Words(const QString& text) {
  auto* label = new QLabel(text, this);
  label->setWordWrap(true);
  Form().addRow(label);
  return *label;
}

void OptionPage::Across(QWidget* widget) {
  Form().addRow(widget);
}

}  // namespace tarvolt
