#pragma once

#include <QWidget>

#include "core/load_commands.h"

namespace tarvolt {

/// The forms of the load commands as dialogs over a window. Both wait for the person, while the recorder's events go
/// on.
LoadForms LoadFormsOver(QWidget* parent, Session& session);

}  // namespace tarvolt
