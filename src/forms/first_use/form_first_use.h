#pragma once

#include <QDialog>
#include <QTimer>

#include "forms/options/option_fields.h"
#include "model/session.h"

namespace tarvolt {

/// What a new station needs to know before it starts: who and where it is, and where its data go.
class FormFirstUse final : public QDialog {
 public:
  /// Shows `settings`, and changes them when it is accepted. `endAsked` tells when the program is to end: then it
  /// closes as cancelled. All outlive it.
  FormFirstUse(Session& session, Settings& settings, std::function<bool()> endAsked);

 private:
  void Confirm();

  Session& session_;
  Settings& settings_;
  OptionFields fields_;
  QTimer endTimer_;
};

/// Lets a person complete the settings; false, and told, when that was cancelled. Waits for the person.
bool RunFirstUse(Session& session, Settings& settings, std::function<bool()> endAsked);

}  // namespace tarvolt
