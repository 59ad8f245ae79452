// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "model/session.h"

namespace tarvolt {

/// Which entries the program makes by itself. Deletes itself when closed.
class FormOLogIncludes final : public QDialog {
 public:
  FormOLogIncludes(Session& session, QWidget* parent);

  void accept() override;

 private:
  Session& session_;
};

}  // namespace tarvolt
