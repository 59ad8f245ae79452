// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/chart_menus.h"

namespace tarvolt {

void AddViewMenu(QMenu& menu, MenuItems& items, const ChartWindow& window, ChartCommands& chart) {
  const auto hasSamples = [&window] { return window.chart.Count() > 0; };
  items.Add(
      menu, "mnuFullView", QStringLiteral("&Full View"), QKeySequence(Qt::Key_F9),
      [&chart] { chart.view.cmdFullView(); }, hasSamples);
  items.Add(
      menu, "mnuLastView", QStringLiteral("&Back to the View Before"), {}, [&chart] { chart.view.RestoreFullView(); },
      [&window] { return window.views.full.has_value(); });
  items.Add(
      menu, "mnuAutoScroll", QStringLiteral("Auto-S&croll"), QKeySequence(Qt::Key_F11),
      [&chart] { chart.view.cmdAutoScrollEnable(); }, {}, [&window] { return window.chart.AutoScroll; });
  items.Add(
      menu, "mnuAutoScale", QStringLiteral("&Auto-Scale"), QKeySequence(Qt::Key_F12),
      [&chart] { chart.view.cmdAutoScale(); }, {}, [&window] { return window.chart.AutoScale; });
  items.Add(
      menu, "mnuChartView", QStringLiteral("View by &Numbers..."), QKeySequence(QStringLiteral("Ctrl+G")),
      [&chart] { chart.view.mnuChartView(); }, hasSamples);
  menu.addSeparator();
  items.Add(
      menu, "mnuRememberXY", QStringLiteral("Re&member XY"), {}, [&chart] { chart.view.mnuRememberXY(); }, hasSamples);
  items.Add(
      menu, "mnuRecallXY", QStringLiteral("Re&call XY"), {}, [&chart] { chart.view.mnuRecallXY(); },
      [&window] { return window.view.mnuRecallXY; });
  items.Add(menu, "mnuRestoreXYtoDefaults", QStringLiteral("Restore XY to &Defaults"), {},
            [&chart] { chart.view.mnuRestoreXYtoDefaults(); });
  items.Add(menu, "mnuSetYminToZero", QStringLiteral("Set Y Min to &Zero"), {},
            [&chart] { chart.view.mnuSetYminToZero(); });
  menu.addSeparator();
  items.Add(
      menu, "mnuSetTimeMarker", QStringLiteral("Set Time Mar&ker at Cursor"), QKeySequence(QStringLiteral("Ctrl+M")),
      [&chart] { chart.cursor.mnuSetTimeMarker(); }, [&window] { return window.chart.CursorChannel >= 0; });
  items.Add(
      menu, "mnuRemoveTimeMarker", QStringLiteral("Remo&ve Time Marker"), {},
      [&chart] { chart.cursor.mnuRemoveTimeMarker(); }, [&window] { return window.chart.TimeMarker.has_value(); });
  items.Add(
      menu, "mnuTimeMilliseconds", QStringLiteral("Time with M&illiseconds"), {},
      [&chart] { chart.cursor.mnuTimeMilliseconds(); }, {}, [&window] { return window.look.DisplayMilliseconds; });
  items.Add(
      menu, "mnuShowLegend", QStringLiteral("&Legend"), {}, [&chart] { chart.look.mnuShowLegend(); }, {},
      [&window] { return window.chart.LegendShown; });
  items.Add(
      menu, "mnuShowChartNotations", QStringLiteral("Chart &Notations"), {},
      [&chart] { chart.look.mnuShowChartNotations(); }, [&window] { return window.notations.count > 0; },
      [&window] { return window.chart.NotationsShown; });
}

void AddVisibilityMenu(QMenu& menu, MenuItems& items, const ChartWindow& window, ChartCommands& chart) {
  menu.menuAction()->setObjectName(QStringLiteral("mnuChannelVisibility"));
  items.Watch(menu.menuAction(), [&window] { return window.view.mnuChannelVisibility; });
  for (int channel = 0; channel < kChannels; ++channel) {
    const QByteArray name = "mnuVisCH" + QByteArray::number(channel + 1);
    items.Add(
        menu, name.constData(), QStringLiteral("CH&%1").arg(channel + 1), {},
        [&chart, channel] { chart.look.mnuVisCH(channel); },
        [&window, channel] { return channel < window.chart.ChannelCount(); },
        [&window, channel] { return window.chart.ChannelVisible[channel]; });
  }
  items.Add(
      menu, "mnuShowAllChannels", QStringLiteral("Show &All Channels"), {},
      [&chart] { chart.look.mnuShowAllChannels(); }, [&window] { return window.view.mnuChannelVisibility; });
}

bool ObeyChartKey(const QKeyEvent& key, ChartCommands& chart) {
  switch (key.key()) {
    case Qt::Key_Left:
      chart.view.ScrollLeft();
      return true;
    case Qt::Key_Right:
      chart.view.ScrollRight();
      return true;
    case Qt::Key_Up:
      chart.view.ScrollUp();
      return true;
    case Qt::Key_Down:
      chart.view.ScrollDown();
      return true;
    case Qt::Key_F3:
      if (!key.modifiers().testFlag(Qt::ShiftModifier)) return false;
      chart.look.ToggleStatusLine();
      return true;
    default:
      return false;
  }
}

}  // namespace tarvolt
