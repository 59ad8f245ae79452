// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/equations/form_apply_to_channels.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "automation/channel_equations/default_equations.h"
#include "automation/channel_equations/equation_file.h"
#include "automation/channel_equations/equation_trial.h"
#include "forms/qt_text.h"
#include "text/ansi.h"

namespace tarvolt {
namespace {

constexpr const char* kFileFilter = "Tarvolt Equations|*.equ|Any|*.*";

constexpr const char* kNone = " ";

EquationSample NewestSample(const ChartWindow& window, const ChannelExtremes& extremes) {
  if (window.chart.Count() == 0) return EquationSample{window.chart, window.run};
  return SampleOfChart(window, window.LastSampleIndex(), extremes);
}

}  // namespace

FormApplytoChannels::FormApplytoChannels(Session& session, const ChartWindow& window, const EquationsRequest& request,
                                         const EquationSet& set, QWidget* parent)
    : QDialog(parent),
      session_(session),
      window_(window),
      rows_(std::clamp(request.channels, 1, kChannels)),
      isForIncoming_(request.isForIncoming),
      set_(set),
      file_(new QLabel(this)),
      result_(new QPlainTextEdit(this)) {
  setObjectName(QStringLiteral("FormApplytoChannels"));
  setWindowTitle(ToQString(request.caption));
  new QVBoxLayout(this);
  MakeMenus();
  auto* grid = new QGridLayout;
  grid->setColumnStretch(1, 1);
  for (int channel = 0; channel < rows_; ++channel) MakeRow(*grid, channel);
  static_cast<QVBoxLayout*>(layout())->addLayout(grid);
  // Broken by hand: a label that wraps would leave the layout without a height to begin with.
  auto* hint =
      new QLabel(QStringLiteral("X is the value of the channel itself, Z1 to Z8 those of the channels, and Z1[-1] is\n"
                                "channel 1 one sample before. TDay, TSDay, Snum, DataMin1 and DataMax1 are known too.\n"
                                "Statements are parted by \";\" and functions are in lower case:\n"
                                "IF{[X] > [100]};THEN{y=100};ELSE{y=X};y*2"),
                 this);
  layout()->addWidget(hint);
  file_->setObjectName(QStringLiteral("LBLEquationFile"));
  file_->setTextFormat(Qt::PlainText);
  layout()->addWidget(file_);
  result_->setObjectName(QStringLiteral("txtTestResult"));
  result_->setReadOnly(true);
  result_->setPlaceholderText(QStringLiteral("Test (Ctrl+T) tries the equation that the cursor stands in."));
  result_->setMinimumHeight(fontMetrics().lineSpacing() * 9);
  result_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  static_cast<QVBoxLayout*>(layout())->addWidget(result_, 1);
  MakeButtons();
  Show(set_);
  resize(680, sizeHint().height());
  texts_[0]->setFocus();
}

void FormApplytoChannels::MakeMenus() {
  auto* bar = new QMenuBar(this);
  layout()->setMenuBar(bar);
  const auto add = [this](QWidget& menu, const char* name, const QString& caption, const QKeySequence& key,
                          void (FormApplytoChannels::*command)()) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [this, command] { (this->*command)(); });
    menu.addAction(action);
  };
  QMenu& file = *bar->addMenu(QStringLiteral("&File"));
  add(file, "mnuLoadEquations", QStringLiteral("&Load Equations..."), QKeySequence::Open,
      &FormApplytoChannels::LoadFile);
  add(file, "mnuSaveEquations", QStringLiteral("&Save Equations..."), QKeySequence::Save,
      &FormApplytoChannels::SaveFile);
  add(*bar, "mnuTest", QStringLiteral("&Test"), QKeySequence(QStringLiteral("Ctrl+T")), &FormApplytoChannels::mnuTest);
}

void FormApplytoChannels::MakeRow(QGridLayout& grid, int channel) {
  ticks_[channel] = new QCheckBox(QStringLiteral("CH %1").arg(channel + 1), this);
  ticks_[channel]->setObjectName(QStringLiteral("ChkCH%1").arg(channel));
  texts_[channel] = new QLineEdit(this);
  texts_[channel]->setObjectName(QStringLiteral("txtEqu%1").arg(channel));
  texts_[channel]->setAccessibleName(QStringLiteral("Equation of channel %1").arg(channel + 1));
  texts_[channel]->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  grid.addWidget(ticks_[channel], channel, 0);
  grid.addWidget(texts_[channel], channel, 1);
}

void FormApplytoChannels::MakeButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  const auto add = [this, buttons](const char* name, const QString& caption, void (FormApplytoChannels::*command)()) {
    QPushButton* button = buttons->addButton(caption, QDialogButtonBox::ResetRole);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, command] { (this->*command)(); });
  };
  add("cmdLoadDefaults", QStringLiteral("Load &Defaults"), &FormApplytoChannels::cmdLoadDefaults);
  add("CmdSave", QStringLiteral("Save &as Defaults"), &FormApplytoChannels::CmdSave);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout()->addWidget(buttons);
}

void FormApplytoChannels::Show(const EquationSet& set) {
  set_ = set;
  for (int channel = 0; channel < rows_; ++channel) {
    ticks_[channel]->setChecked(set.ApplyToCH[channel] != 0);
    texts_[channel]->setText(ToQString(Trim(set.EquString[channel])));
    texts_[channel]->setCursorPosition(0);
  }
}

EquationSet FormApplytoChannels::Equations() const {
  EquationSet set = set_;
  for (int channel = 0; channel < rows_; ++channel) {
    const std::string text = Trim(CleanEquation(FromQString(texts_[channel]->text())));
    set.ApplyToCH[channel] = ticks_[channel]->isChecked() ? 1 : 0;
    set.EquString[channel] = text.empty() ? kNone : text;
  }
  return set;
}

void FormApplytoChannels::cmdLoadDefaults() {
  Show(LoadDefaultEquations(session_.store));
  file_->setText(QStringLiteral("Default Equations Loaded"));
}

void FormApplytoChannels::CmdSave() {
  const Outcome saved = SaveDefaultEquations(session_, Equations(), isForIncoming_);
  if (!saved) return result_->setPlainText(ToQString(saved.Words()));
  file_->setText(QStringLiteral("Default Equations Loaded"));
}

std::string FormApplytoChannels::Folder() const {
  const std::string folder = session_.store.GetSetting(Section::Settings, "EquPath");
  return folder.empty() ? session_.home.string() : folder;
}

void FormApplytoChannels::RememberFolder(const std::string& file) {
  const std::filesystem::path path(file);
  session_.store.SaveSetting(Section::Settings, "EquPath", path.parent_path().string());
  file_->setText(ToQString(path.filename().string()));
}

void FormApplytoChannels::LoadFile() {
  const auto file = session_.host.dialogs.AskOpenFile(
      {"Load Equations From File  (ext =equ)", Folder(), "*.equ", ".equ", kFileFilter});
  if (!file) return;
  EquationSet set = Equations();
  const Outcome loaded = LoadEquationFile(session_.host.files, *file, set);
  if (!loaded) return result_->setPlainText(ToQString("Could not load " + *file + ": " + loaded.Words()));
  Show(set);
  RememberFolder(*file);
}

void FormApplytoChannels::SaveFile() {
  const auto file =
      session_.host.dialogs.AskSaveFile({"Save Equations to File (ext=equ)", Folder(), "", ".equ", kFileFilter});
  if (!file) return;
  const Outcome saved = SaveEquationFile(session_.host.files, *file, Equations());
  if (!saved) return result_->setPlainText(ToQString("Could not save " + *file + ": " + saved.Words()));
  RememberFolder(*file);
}

// The row that the cursor stands in, or stood in last.
int FormApplytoChannels::RowInHand() const {
  const auto found = std::find(texts_.begin(), texts_.begin() + rows_, focusWidget());
  return found == texts_.begin() + rows_ ? 0 : static_cast<int>(found - texts_.begin());
}

void FormApplytoChannels::mnuTest() {
  const std::string equation = Equations().EquString[RowInHand()];
  const ChannelExtremes extremes = ExtremesOf(window_.chart);
  const std::string report = TryEquation(equation, NewestSample(window_, extremes), [this] {
    return session_.host.dialogs.AskText({"Equation Test", "Enter Test Value for X.", ""});
  });
  if (!report.empty()) result_->setPlainText(ToQString(report));
}

}  // namespace tarvolt
