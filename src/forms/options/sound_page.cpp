#include "forms/options/sound_page.h"

#include "core/sound_card.h"
#include "forms/qt_text.h"
#include "forms/sound/form_sound_format.h"
#include "sources/sound/sound_formats.h"

namespace tarvolt {
namespace {

std::string CardShown(const QComboBox& cards) {
  return FromQString(cards.currentData().toString());
}

QPushButton* AddFormatRow(OptionPage& page) {
  auto* row = new QWidget(&page);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* format = new QLabel(row);
  format->setObjectName(QStringLiteral("LblSoundFormat"));
  layout->addWidget(format, 1);
  auto* choose = new QPushButton(QStringLiteral("Format..."), row);
  choose->setObjectName(QStringLiteral("cmdSoundFormat"));
  choose->setAutoDefault(false);
  layout->addWidget(choose);
  page.Across(row);
  return choose;
}

}  // namespace

OptionPage* MakeSoundPage(OptionFields& fields, Session& session, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  page->Group(QStringLiteral("Sound card"));
  QComboBox& cards = page->SoundCards(SoundCardsToChoose(session, session.settings));
  QPushButton* choose = AddFormatRow(*page);
  const auto showFormat = [page, &session, &cards] { ShowSoundFormat(*page, session, CardShown(cards)); };
  QObject::connect(choose, &QPushButton::clicked, page, [page, &session, &cards, showFormat] {
    (new FormSoundFormat(session, CardShown(cards), showFormat, page))->open();
  });
  QObject::connect(&cards, &QComboBox::currentIndexChanged, page, showFormat);
  page->Line("Pbuffer", QStringLiteral("Sound buffer"), QStringLiteral("bytes"));
  page->Line("PreBuffLen", QStringLiteral("WAV pre-buffer"), QStringLiteral("seconds"));
  page->Line("SCTadjust", QStringLiteral("Sound Card Timing Correction"));
  page->Group(QStringLiteral("Power Detection Factor"));
  page->Line("PwrMultiL", QStringLiteral("Left"));
  page->Line("PwrMultiR", QStringLiteral("Right"));
  page->Close();
  return page;
}

void ShowSoundFormat(const QWidget& page, const Session& session, const std::string& card) {
  Settings settings = session.settings;
  settings.SoundCardName = card;
  page.findChild<QLabel*>(QStringLiteral("LblSoundFormat"))
      ->setText(QStringLiteral("Format: ") + ToQString(SoundFormatText(SoundFormatInUse(session, settings))));
}

}  // namespace tarvolt
