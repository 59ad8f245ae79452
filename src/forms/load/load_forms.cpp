// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/load/load_forms.h"

#include "forms/load/form_chart_loading_options.h"
#include "forms/load/form_selective_load.h"

namespace tarvolt {

bool AskLoadOptions(QWidget* parent, Session& session, LoadOptions& options) {
  FormChartLoadingOptions form(session, options, parent);
  if (form.exec() != QDialog::Accepted) return false;
  form.ApplyToOwner(options);
  return true;
}

std::optional<ChannelAnswer> AskWhichChannels(QWidget* parent, const ChannelQuestion& question) {
  FormSelectiveLoad form(question, parent);
  if (form.exec() != QDialog::Accepted) return std::nullopt;
  return form.Answer();
}

}  // namespace tarvolt
