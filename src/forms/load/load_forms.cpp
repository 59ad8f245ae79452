#include "forms/load/load_forms.h"

#include "forms/load/form_chart_loading_options.h"
#include "forms/load/form_selective_load.h"

namespace tarvolt {

LoadForms LoadFormsOver(QWidget* parent, Session& session) {
  LoadForms forms;
  forms.options = [parent, &session](LoadOptions& options) {
    FormChartLoadingOptions form(session, options, parent);
    if (form.exec() != QDialog::Accepted) return false;
    form.ApplyToOwner(options);
    return true;
  };
  forms.channels = [parent](const ChannelQuestion& question) -> std::optional<ChannelAnswer> {
    FormSelectiveLoad form(question, parent);
    if (form.exec() != QDialog::Accepted) return std::nullopt;
    return form.Answer();
  };
  return forms;
}

}  // namespace tarvolt
