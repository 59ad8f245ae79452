// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/date_entry/form_date_entry.h"

#include <QDateTimeEdit>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace tarvolt {
namespace {

// The stamp's own fields, whatever zone the machine is in.
QDateTime ToQDateTime(TimeStamp stamp) {
  const DateFields fields = FieldsOf(stamp);
  return QDateTime(QDate(fields.year, fields.month, fields.day),
                   QTime(fields.hour, fields.minute, fields.second, fields.millisecond), Qt::UTC);
}

TimeStamp ToStamp(const QDateTime& moment) {
  const QDate date = moment.date();
  const QTime time = moment.time();
  return StampOf({date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second(), time.msec()});
}

}  // namespace

std::optional<TimeStamp> FormDateEntry(QWidget* parent, const QString& prompt, TimeStamp stamp) {
  QDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("FormDateEntry"));
  dialog.setWindowTitle(QStringLiteral("Date and Time"));
  auto* label = new QLabel(prompt, &dialog);
  auto* entry = new QDateTimeEdit(&dialog);
  entry->setObjectName(QStringLiteral("TxtDate"));
  entry->setTimeSpec(Qt::UTC);
  entry->setDateTime(ToQDateTime(stamp));
  entry->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
  entry->setCalendarPopup(true);
  entry->setMinimumDate(QDate(100, 1, 1));
  label->setBuddy(entry);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(label);
  layout->addWidget(entry);
  layout->addWidget(buttons);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return ToStamp(entry->dateTime());
}

}  // namespace tarvolt
