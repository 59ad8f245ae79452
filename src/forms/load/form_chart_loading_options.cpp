// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/load/form_chart_loading_options.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/chart/load_commands.h"

namespace tarvolt {

FormChartLoadingOptions::FormChartLoadingOptions(Session& session, const LoadOptions& options, QWidget* parent)
    : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("FormChartLoadingOptions"));
  setWindowTitle(QStringLiteral("Chart Loading Options"));
  auto* layout = new QVBoxLayout(this);
  localOffsets_ = AddBox("chkLoadWithLocalOffsets", QStringLiteral("Add the channel offsets of this &station."),
                         options.LoadLocalOffsets);
  fileOffsets_ = AddBox("chkLoadWithFileOffsets", QStringLiteral("Add the channel offsets in the &file."),
                        options.LoadFileOffsets);
  selectedChannels_ =
      AddBox("chkLoadSelectedChannels", QStringLiteral("Load selected &channels only."), options.LoadSelectedChannels);
  auto* line = new QFrame(this);
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  layout->addWidget(line);
  show_ = AddBox("chkShowOptions", QStringLiteral("Show this panel for all loads."),
                 session_.settings.files.ShowLoadOptions);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Save)->setObjectName(QStringLiteral("cmdSave"));
  buttons->button(QDialogButtonBox::Save)->setToolTip(QStringLiteral("Begin every load with these ticks"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  layout->addSpacing(8);
  layout->addStretch();
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  // A box with OK and Save takes either as acceptance; this Save keeps the panel open.
  disconnect(buttons->button(QDialogButtonBox::Save), nullptr, buttons, nullptr);
  connect(buttons->button(QDialogButtonBox::Save), &QPushButton::clicked, this, [this] { Save(); });
}

QCheckBox* FormChartLoadingOptions::AddBox(const char* name, const QString& caption, bool ticked) {
  auto* box = new QCheckBox(caption, this);
  box->setObjectName(QString::fromLatin1(name));
  box->setChecked(ticked);
  layout()->addWidget(box);
  return box;
}

void FormChartLoadingOptions::ApplyToOwner(LoadOptions& options) const {
  options.LoadLocalOffsets = localOffsets_->isChecked();
  options.LoadFileOffsets = fileOffsets_->isChecked();
  options.LoadSelectedChannels = selectedChannels_->isChecked();
}

void FormChartLoadingOptions::Save() {
  LoadOptions options;
  ApplyToOwner(options);
  StoreLoadOptions(session_, options, show_->isChecked());
}

}  // namespace tarvolt
