// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/chart_tool_bar.h"

#include <QAction>
#include <QToolButton>

#include "core/chart/command_states.h"
#include "forms/plot/chart_colors.h"
#include "forms/qt_text.h"

namespace tarvolt {

ChartToolBar::ChartToolBar(const ChartWindow& window, ChartCommands& commands, QWidget* parent)
    : QToolBar(QStringLiteral("Chart"), parent), window_(window), commands_(commands) {
  setObjectName(QStringLiteral("ChartToolBar"));
  setMovable(false);
  setToolButtonStyle(Qt::ToolButtonTextOnly);
  fullView_ = Add("cmdFullView", QStringLiteral("Full"), QStringLiteral("Full View (F9)"),
                  [this] { commands_.view.cmdFullView(); });
  autoScroll_ =
      Add("cmdAutoScrollEnable", QStringLiteral("Plot"), {}, [this] { commands_.view.cmdAutoScrollEnable(); });
  autoScale_ = Add("cmdAutoScale", QStringLiteral("Scale"), {}, [this] { commands_.view.cmdAutoScale(); });
  cursor_ = Add("cmdCursor", QStringLiteral("Cursor"), QStringLiteral("Read values at the pointer"),
                [this] { commands_.cursor.cmdCursor(); });
  zoom_ = Add("cmdZoom", QStringLiteral("Zoom"), QStringLiteral("Zoom to a rectangle"),
              [this] { commands_.cursor.cmdZoom(); });
  for (QAction* action : {autoScroll_, autoScale_, cursor_, zoom_}) action->setCheckable(true);
  addSeparator();
  AddStep("cmdLeft", QStringLiteral("\u25C0"), QStringLiteral("Scroll left"), [this] { commands_.view.ScrollLeft(); });
  AddStep("cmdRight", QStringLiteral("\u25B6"), QStringLiteral("Scroll right"),
          [this] { commands_.view.ScrollRight(); });
  AddStep("cmdUp", QStringLiteral("\u25B2"), QStringLiteral("Scroll up"), [this] { commands_.view.ScrollUp(); });
  AddStep("cmdDown", QStringLiteral("\u25BC"), QStringLiteral("Scroll down"), [this] { commands_.view.ScrollDown(); });
  AddStep("cmdDecX", QStringLiteral("X\u2212"), QStringLiteral("Less time"), [this] { commands_.view.DecX(); });
  AddStep("cmdIncX", QStringLiteral("X+"), QStringLiteral("More time"), [this] { commands_.view.IncX(); });
  AddStep("cmdDecY", QStringLiteral("Y\u2212"), QStringLiteral("Smaller range"), [this] { commands_.view.DecY(); });
  AddStep("cmdIncY", QStringLiteral("Y+"), QStringLiteral("Larger range"), [this] { commands_.view.IncY(); });
  Refresh();
}

QAction* ChartToolBar::Add(const char* name, const QString& caption, const QString& tip, std::function<void()> act) {
  QAction* action = addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  action->setToolTip(tip);
  connect(action, &QAction::triggered, this, [this, act = std::move(act)] {
    act();
    Refresh();
  });
  widgetForAction(action)->setObjectName(QString::fromLatin1(name));
  return action;
}

QAction* ChartToolBar::AddStep(const char* name, const QString& caption, const QString& tip,
                               std::function<void()> act) {
  auto* button = new QToolButton(this);
  button->setText(caption);
  button->setToolTip(tip);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoRepeat(true);
  button->setAutoRepeatDelay(400);
  button->setAutoRepeatInterval(100);
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QToolButton::pressed, this, std::move(act));
  QAction* action = addWidget(button);
  arrows_.push_back(action);
  return action;
}

void ChartToolBar::Refresh() {
  const CommandStates states = StatesOf(window_);
  const bool hasData = window_.chart.Count() > 0;
  fullView_->setEnabled(hasData);
  cursor_->setEnabled(hasData);
  zoom_->setEnabled(hasData);
  autoScroll_->setChecked(window_.chart.AutoScroll);
  autoScroll_->setToolTip(ToQString(states.AutoScrollTip));
  autoScale_->setChecked(window_.chart.AutoScale);
  autoScale_->setToolTip(ToQString(states.AutoScaleTip));
  cursor_->setChecked(window_.chart.Mode == ChartMode::Cursor);
  zoom_->setChecked(window_.chart.Mode == ChartMode::Zoom);
  for (QAction* action : arrows_) {
    action->setVisible(window_.view.ArrowsShown);
    action->setEnabled(hasData);
    SetColor(action, states.ArrowsActive);
  }
  for (QAction* action : {autoScroll_, autoScale_, cursor_, zoom_}) SetColor(action, action->isChecked());
}

void ChartToolBar::SetColor(QAction* action, bool active) {
  const ChartColors& colors = window_.look.colors;
  ShowInColor(*widgetForAction(action),
              active ? colors.ToolbarActiveModeFontColor : colors.ToolbarInactiveModeFontColor);
}

}  // namespace tarvolt
