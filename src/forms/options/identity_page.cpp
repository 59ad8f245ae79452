// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/identity_page.h"

#include <QFileDialog>

#include "forms/qt_text.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

// A longitude that nobody has touched is shown in the sense that was just chosen; one that was typed stays.
void AddPosition(OptionPage& page, OptionFields& fields) {
  page.Group(QStringLiteral("Position"));
  page.Line("UserLat", QStringLiteral("Latitude"), QStringLiteral("N   (degrees:minutes:seconds, south negative)"));
  page.Line("UserLng", QStringLiteral("Longitude"), QStringLiteral("E"));
  auto* side = page.findChild<QLabel*>(QStringLiteral("LblUserLng"));
  QCheckBox& west = page.Check("DisplayWest", QStringLiteral("Longitudes are counted to the west"));
  QObject::connect(&west, &QCheckBox::toggled, &west, [&fields, side](bool checked) {
    side->setText(checked ? QStringLiteral("W") : QStringLiteral("E"));
    Settings settings = fields.Shown();
    settings.place.DisplayWest = checked;
    fields.ShowInstead("UserLng", OptionText(settings, "UserLng"));
  });
}

void AddZone(OptionPage& page, Clock& clock) {
  page.Group(QStringLiteral("Time Zone"));
  QLineEdit& zone = page.Line("TZ", QStringLiteral("Local time minus UT"), QStringLiteral("hours"));
  QCheckBox& detect = page.Check("DetectTZ", QStringLiteral("Detect the time zone"));
  QObject::connect(&detect, &QCheckBox::toggled, &detect, [&zone, &clock](bool checked) {
    zone.setEnabled(!checked);
    if (checked) zone.setText(ToQString(NumberText(DetectTimeZoneHours(clock))));
  });
}

}  // namespace

void AddStationFields(OptionPage& page, OptionFields& fields, Clock& clock) {
  page.Group(QStringLiteral("Station"));
  page.Line("LocalName", QStringLiteral("Local Name"))
      .setToolTip(QStringLiteral("Files keep 20 characters of it; it also names the folder of the files."));
  page.Line("Author", QStringLiteral("Observer")).setToolTip(QStringLiteral("Files keep 20 characters of it."));
  page.Line("QTH", QStringLiteral("Location")).setToolTip(QStringLiteral("Files keep 40 characters of it."));
  page.Line("ServerEmail", QStringLiteral("E-mail"));
  AddPosition(page, fields);
  AddZone(page, clock);
}

OptionPage* MakeIdentityPage(OptionFields& fields, Clock& clock, QPlainTextEdit*& notes, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  AddStationFields(*page, fields, clock);
  page->Group(QStringLiteral("Notes, put into every file"));
  notes = new QPlainTextEdit(page);
  notes->setObjectName(QStringLiteral("TxtNotes"));
  notes->setTabChangesFocus(true);
  notes->setFixedHeight(notes->fontMetrics().lineSpacing() * 5);
  page->Across(notes);
  page->Close();
  return page;
}

QString ChooseFolder(QWidget* parent, const QString& title, const QString& text) {
  return QFileDialog::getExistingDirectory(parent, title, text);
}

}  // namespace tarvolt
