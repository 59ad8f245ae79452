#include "forms/sound/form_sound_format.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "forms/qt_text.h"

namespace tarvolt {

FormSoundFormat::FormSoundFormat(Session& session, const std::string& card, std::function<void()> chosen,
                                 QWidget* parent)
    : QDialog(parent), session_(session), chosen_(std::move(chosen)) {
  setObjectName(QStringLiteral("FormSoundFormat"));
  setWindowTitle(QStringLiteral("Sound Format"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* layout = new QVBoxLayout(this);
  auto* name = new QLabel(ToQString(card), this);
  name->setTextFormat(Qt::PlainText);
  name->setWordWrap(true);
  layout->addWidget(name);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("LstFormats"));
  layout->addWidget(list_, 1);
  words_ = new QLabel(this);
  words_->setObjectName(QStringLiteral("LblFormats"));
  words_->setWordWrap(true);
  layout->addWidget(words_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  ok->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { Choose(); });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  connect(list_, &QListWidget::itemDoubleClicked, this, [this] { Choose(); });
  FillList(card);
  ok->setEnabled(list_->currentItem() != nullptr);
  connect(list_, &QListWidget::currentItemChanged, this,
          [ok](QListWidgetItem* item) { ok->setEnabled(item != nullptr); });
  resize(380, 420);
}

void FormSoundFormat::FillList(const std::string& card) {
  const std::vector<SoundFormatLine> lines = SoundFormatsOf(session_, card);
  for (const SoundFormatLine& line : lines) AddLine(line);
  words_->setText(lines.empty() ? QStringLiteral("The sound input cannot be asked for its formats now: it is not "
                                                 "there, or a chart or another program is using it.")
                                : QStringLiteral("The format counts from the next start of a chart."));
}

void FormSoundFormat::AddLine(const SoundFormatLine& line) {
  QString text = ToQString(line.text);
  if (!line.usable) text += QStringLiteral("  (a chart needs 16 Bit)");
  auto* item = new QListWidgetItem(text, list_);
  item->setData(Qt::UserRole, line.row);
  if (!line.usable) item->setFlags(Qt::NoItemFlags);
  const bool isOnly = line.row < 0;  // an input's own format, whatever is set
  if (line.usable && (isOnly || line.row == session_.settings.sWavFormat)) list_->setCurrentItem(item);
}

void FormSoundFormat::Choose() {
  const QListWidgetItem* item = list_->currentItem();
  if (item == nullptr || !item->flags().testFlag(Qt::ItemIsEnabled)) return;
  ChooseSoundFormat(session_, item->data(Qt::UserRole).toInt());
  accept();
  if (chosen_) chosen_();
}

}  // namespace tarvolt
