// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/sound_page.h"

#include "core/sound/sound_card.h"
#include "forms/qt_text.h"
#include "forms/sound/form_sound_format.h"
#include "sources/sound/format_in_use.h"
#include "sources/sound/sound_formats.h"
#include "text/number.h"

namespace tarvolt {
namespace {

/// The row of the format, which is a field of the dialog: its text tells the format that the card is opened with.
class FormatRow final : public QWidget {
 public:
  FormatRow(OptionFields& fields, const Session& session, const QComboBox& cards, QWidget* parent)
      : QWidget(parent), fields_(fields), session_(session), cards_(cards) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    words_ = new QLabel(this);
    words_->setObjectName(QStringLiteral("LblSoundFormat"));
    layout->addWidget(words_, 1);
    choose_ = new QPushButton(QStringLiteral("Format..."), this);
    choose_->setObjectName(QStringLiteral("cmdSoundFormat"));
    choose_->setAutoDefault(false);
    layout->addWidget(choose_);
    connect(choose_, &QPushButton::clicked, this, [this] { Choose(); });
    connect(&cards, &QComboBox::currentIndexChanged, this, [this] { ShowFormat(); });
    fields.Add(
        "sWavFormat", *choose_, [this] { return shown_; },
        [this](const std::string& text) {
          shown_ = text;
          ShowFormat();
        });
  }

 private:
  Settings Draft() const {
    Settings draft = session_.settings;
    draft.sound.SoundCardName = FromQString(cards_.currentData().toString());
    draft.sound.sWavFormat = static_cast<std::int32_t>(ValLong(shown_));
    return draft;
  }

  void ShowFormat() {
    const Settings draft = Draft();
    choose_->setEnabled(HasSoundCard(draft));
    words_->setText(QStringLiteral("Format: ") + ToQString(SoundFormatText(SoundFormatInUse(session_, draft.sound))));
  }

  void Choose() {
    const Settings draft = Draft();
    const auto take = [this](int row) {
      if (row < 0) return;
      shown_ = NumberText(std::int64_t{row});
      ShowFormat();
      fields_.Touched();
    };
    (new FormSoundFormat(session_, draft.sound.SoundCardName, draft.sound.sWavFormat, take, this))->open();
  }

  OptionFields& fields_;
  const Session& session_;
  const QComboBox& cards_;
  QLabel* words_;
  QPushButton* choose_;
  std::string shown_ = "0";
};

}  // namespace

OptionPage* MakeSoundPage(OptionFields& fields, Session& session, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  page->Group(QStringLiteral("Sound card"));
  QComboBox& cards = page->SoundCards(SoundCardsToChoose(session, session.settings));
  page->Across(new FormatRow(fields, session, cards, page));
  page->Line("Pbuffer", QStringLiteral("Sound buffer"), QStringLiteral("bytes"));
  page->Line("PreBuffLen", QStringLiteral("WAV pre-buffer"), QStringLiteral("seconds"));
  page->Line("SCTadjust", QStringLiteral("Sound Card Timing Correction"));
  page->Group(QStringLiteral("Power Detection Factor"));
  page->Line("PwrMultiL", QStringLiteral("Left"));
  page->Line("PwrMultiR", QStringLiteral("Right"));
  page->Close();
  return page;
}

}  // namespace tarvolt
