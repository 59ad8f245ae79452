// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QTextCursor>
#include <QTextDocument>
#include <optional>

#include "logs/rich_text.h"

namespace tarvolt {

/// What the box holds, in the recorder's own letters.
RichText RichTextOf(const QTextDocument& document);

/// Puts the pieces in at the cursor. A picture that cannot be decoded is left out.
void InsertRichText(const RichText& text, QTextCursor& cursor);

/// Puts a picture in at the cursor, no wider than `widest` pixels.
void InsertPicture(const QImage& image, int widest, QTextCursor& cursor);

/// Pictures among the pieces.
int PicturesIn(const RichText& text);

}  // namespace tarvolt
