// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/common/obey.h"

#include "core/station/command_runner.h"

namespace tarvolt {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

}  // namespace

int ObeyOptions(FormMain& form, Session& session, const StationOptions& options) {
  if (!options.profile.empty() && !form.Profiles().Load(options.profile)) return kFailed;
  if (options.mode != SessionMode::StandAlone) form.EnterMode(options.mode);
  if (!options.load.empty() && !form.Loads().LoadDataFile(options.load)) return kFailed;
  return RunCommandLine(form, session, options.slashCommands) ? kSuccess : kWrongUsage;
}

}  // namespace tarvolt
