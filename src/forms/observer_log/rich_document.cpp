// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/observer_log/rich_document.h"

#include <QBuffer>
#include <QImageReader>
#include <QTextBlock>
#include <QUrl>
#include <algorithm>

#include "forms/qt_text.h"

namespace tarvolt {
namespace {

constexpr qint64 kMostPixels = 40'000'000;

TextLook LookOf(const QTextCharFormat& format) {
  TextLook look;
  look.bold = format.fontWeight() >= QFont::Bold;
  look.italic = format.fontItalic();
  look.underline = format.fontUnderline();
  if (format.hasProperty(QTextFormat::ForegroundBrush)) {
    look.color = static_cast<std::int32_t>(format.foreground().color().rgb() & 0xFFFFFF);
  }
  return look;
}

QTextCharFormat FormatOf(const TextLook& look) {
  QTextCharFormat format;
  if (look.bold) format.setFontWeight(QFont::Bold);
  if (look.italic) format.setFontItalic(true);
  if (look.underline) format.setFontUnderline(true);
  if (look.color >= 0) format.setForeground(QColor(static_cast<QRgb>(look.color)));
  return format;
}

std::optional<RichPicture> PictureOf(const QTextDocument& document, const QTextImageFormat& format) {
  const QVariant resource = document.resource(QTextDocument::ImageResource, QUrl(format.name()));
  const QImage image = resource.canConvert<QImage>() ? resource.value<QImage>() : QImage();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (image.isNull() || !buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) return std::nullopt;
  return RichPicture{bytes.toStdString(), static_cast<std::int32_t>(format.width()),
                     static_cast<std::int32_t>(format.height())};
}

// A picture of a file may claim any size.
QImage Decode(const std::string& bytes) {
  QByteArray data = QByteArray::fromStdString(bytes);
  QBuffer buffer(&data);
  QImageReader reader(&buffer);
  const QSize size = reader.size();
  if (!size.isValid() || qint64{size.width()} * size.height() > kMostPixels) return {};
  return reader.read();
}

void InsertImage(const QImage& image, QSize shown, QTextCursor& cursor) {
  const QString name = QStringLiteral("picture:%1").arg(image.cacheKey());
  cursor.document()->addResource(QTextDocument::ImageResource, QUrl(name), image);
  QTextImageFormat format;
  format.setName(name);
  format.setWidth(shown.width());
  format.setHeight(shown.height());
  cursor.insertImage(format);
}

void AppendFragment(const QTextDocument& document, const QTextFragment& fragment, RichText& text) {
  const QTextCharFormat format = fragment.charFormat();
  if (format.isImageFormat()) {
    auto picture = PictureOf(document, format.toImageFormat());
    // One picture stands several times in a row as one fragment.
    for (int i = 0; picture && i < fragment.length(); ++i) text.push_back({"", {}, picture});
    return;
  }
  QString words = fragment.text();
  words.replace(QChar::LineSeparator, QLatin1Char('\n'));
  words.replace(QChar::Nbsp, QLatin1Char(' '));
  words.remove(QChar::ObjectReplacementCharacter);
  text.push_back({FromQString(words), LookOf(format), std::nullopt});
}

}  // namespace

RichText RichTextOf(const QTextDocument& document) {
  RichText text;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    if (block != document.begin()) text.push_back({"\n", {}, std::nullopt});
    for (auto it = block.begin(); !it.atEnd(); ++it) AppendFragment(document, it.fragment(), text);
  }
  return text;
}

void InsertRichText(const RichText& text, QTextCursor& cursor) {
  cursor.beginEditBlock();
  for (const RichPiece& piece : text) {
    if (!piece.picture) {
      cursor.insertText(ToQString(piece.text), FormatOf(piece.look));
      continue;
    }
    const QImage image = Decode(piece.picture->bytes);
    if (image.isNull()) continue;
    const QSize shown(piece.picture->width, piece.picture->height);
    InsertImage(image, shown.isEmpty() ? image.size() : shown, cursor);
  }
  cursor.setCharFormat(QTextCharFormat());
  cursor.endEditBlock();
}

void InsertPicture(const QImage& image, int widest, QTextCursor& cursor) {
  QImage plain = image;
  QSizeF shown = QSizeF(image.size()) / image.devicePixelRatio();
  plain.setDevicePixelRatio(1);
  if (shown.width() > widest) shown.scale(widest, shown.height(), Qt::KeepAspectRatio);
  InsertImage(plain, shown.toSize().expandedTo(QSize(1, 1)), cursor);
}

int PicturesIn(const RichText& text) {
  return static_cast<int>(
      std::count_if(text.begin(), text.end(), [](const RichPiece& piece) { return piece.picture.has_value(); }));
}

}  // namespace tarvolt
